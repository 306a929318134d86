// Fiscal receipts against their items and payments.
#include "bancada/conferencia/Contexto.h"

#include <algorithm>

namespace bancada
{

namespace
{

struct Cupom {
    std::int64_t coo, crz, subtotal, total, desconto, acrescimo, troco;
    std::string hora;
    bool fechado, cancelado;
};

// Quantity by unit price, both in thousandths, in cents. The product is never formed whole: it
// would not fit where quantity and price are both large.
std::int64_t Bruto(std::int64_t quantidade, std::int64_t unitario, bool arredonda)
{
    const std::int64_t milhares = quantidade / 10000;
    const std::int64_t resto = quantidade % 10000;
    return milhares * unitario + (resto * unitario + (arredonda ? 5000 : 0)) / 10000;
}

class Itens
{
  public:
    explicit Itens(Contexto& contexto)
        : m_contexto(contexto),
          m_itens(contexto.Db(),
                  "SELECT seq_item, milesimos(quantidade), milesimos(valor_unitario),"
                  " centavos(valor_acrescimo), centavos(valor_desconto), centavos(valor_total),"
                  " id_arred_trunc_valor = 'A', id_cancelado = 'S'"
                  " FROM item_cupom_fiscal WHERE cont_coo = ?1 ORDER BY seq_item")
    {
    }

    // Checks the items of a receipt; answers the sum of the live ones.
    std::int64_t Confere(std::int64_t coo)
    {
        std::int64_t soma = 0;
        std::int64_t anterior = 0;
        m_itens.Com(coo);
        while (m_itens.Avanca()) {
            const std::int64_t item = m_itens.Inteiro(0);
            m_contexto.RelataItensAusentes(coo, anterior, item);
            anterior = item;
            if (m_itens.Inteiro(7) != 0) {
                continue;
            }
            const std::int64_t total = m_itens.Inteiro(5);
            const std::int64_t calculado =
                Bruto(m_itens.Inteiro(1), m_itens.Inteiro(2), m_itens.Inteiro(6) != 0) +
                m_itens.Inteiro(3) - m_itens.Inteiro(4);
            if (total != calculado) {
                m_contexto.Relata("item-total", Coo(coo) + " item " + std::to_string(item),
                                  "total " + Dinheiro(total) +
                                      ", quantity by price and adjustments " + Dinheiro(calculado),
                                  coo, 0);
            }
            soma += total;
        }
        return soma;
    }

  private:
    Contexto& m_contexto;
    Consulta m_itens;
};

void ConfereFechado(Contexto& contexto, const Cupom& cupom, std::int64_t itens,
                    const Pagamentos& pagamentos)
{
    if (cupom.total != cupom.subtotal - cupom.desconto + cupom.acrescimo) {
        contexto.Relata("cupom-total", Coo(cupom.coo),
                        "total " + Dinheiro(cupom.total) + ", subtotal " +
                            Dinheiro(cupom.subtotal) + " less " + Dinheiro(cupom.desconto) +
                            " plus " + Dinheiro(cupom.acrescimo),
                        cupom.coo, 0);
    }
    // Apportionment writes the subtotal adjustment into the items.
    const bool ajustado = cupom.desconto != 0 || cupom.acrescimo != 0;
    if (itens != cupom.subtotal && !(ajustado && itens == cupom.total)) {
        contexto.Relata("cupom-itens", Coo(cupom.coo),
                        "live items " + Dinheiro(itens) + ", subtotal " + Dinheiro(cupom.subtotal) +
                            ", total " + Dinheiro(cupom.total),
                        cupom.coo, 0);
    }
    if (!pagamentos.incerto && pagamentos.soma - cupom.troco != cupom.total) {
        contexto.Relata("cupom-pagamentos", Coo(cupom.coo),
                        "payments " + Dinheiro(pagamentos.soma) + " less change " +
                            Dinheiro(cupom.troco) + ", total " + Dinheiro(cupom.total),
                        cupom.coo, 0);
    }
}

// A receipt that was neither closed nor cancelled in its row. An additional receipt always reads
// so: its closing is rejected and it keeps what its opening wrote. Whether its items carry the
// subtotal adjustment is then not told, so that its total is one of two.
void ConfereSemFechamento(Contexto& contexto, const Cupom& cupom, std::int64_t itens,
                          const Pagamentos& pagamentos)
{
    const std::int64_t ajustado = itens - cupom.desconto + cupom.acrescimo;
    const std::int64_t menor = std::min(itens, ajustado);
    const std::int64_t maior = std::max(itens, ajustado);
    const bool pago = pagamentos.soma > 0 && pagamentos.soma >= menor;
    Dia& dia = contexto.dias[cupom.crz];
    if (pago && (contexto.Log() == nullptr || contexto.Log()->HasCupomAdicional(cupom.coo))) {
        dia.vendas.Soma(menor, maior);
        dia.recebido.Soma(menor, maior);
        contexto.Relata("cupom-adicional", Coo(cupom.coo),
                        "paid " + Dinheiro(pagamentos.soma) +
                            (contexto.Log() == nullptr ? ", closing never written"
                                                       : ", closing rejected as that of an "
                                                         "additional receipt"),
                        false);
        return;
    }
    // Whether the register counted it, the rows do not tell.
    dia.vendas.Soma(0, maior);
    dia.recebido.Soma(0, maior);
    dia.meiosIncertos = Coo(cupom.coo) + " was left open";
    contexto.Relata(
        "cupom-aberto", Coo(cupom.coo),
        pago ? "paid " + Dinheiro(pagamentos.soma) + ", closing neither in the row nor in the log"
             : "never closed, paid " + Dinheiro(pagamentos.soma) + " of " + Dinheiro(menor),
        cupom.coo, 0);
}

} // namespace

void ConfereCupons(Contexto& contexto)
{
    Consulta cupons(contexto.Db(),
                    "SELECT cont_coo, cont_crz, data_hora_emissao, centavos(valor_subtotal),"
                    " centavos(valor_total), centavos(valor_desconto), centavos(valor_acrescimo),"
                    " centavos(valor_troco), trim(assinatura_documento) <> '', id_cancelado = 'S'"
                    " FROM cupom_fiscal ORDER BY rowid");
    Itens itens(contexto);
    while (cupons.Avanca()) {
        const Cupom cupom = {cupons.Inteiro(0),     cupons.Inteiro(1), cupons.Inteiro(3),
                             cupons.Inteiro(4),     cupons.Inteiro(5), cupons.Inteiro(6),
                             cupons.Inteiro(7),     cupons.Texto(2),   cupons.Inteiro(8) != 0,
                             cupons.Inteiro(9) != 0};
        ++contexto.resumo.cupons;
        Dia& dia = contexto.dias[cupom.crz];
        dia.Junta(cupom.coo, cupom.hora);
        const bool so = contexto.CuponsComCoo(cupom.coo) == 1;
        if (!so) {
            dia.meiosIncertos = Coo(cupom.coo) + " names several receipts";
        }
        if (cupom.fechado && !cupom.cancelado) {
            dia.vendas.Soma(cupom.total);
            dia.recebido.Soma(cupom.total);
        }
        if (!so) {
            continue;
        }
        const std::int64_t soma = itens.Confere(cupom.coo);
        const Pagamentos pagamentos = contexto.PagamentosDe(cupom.coo);
        if (!cupom.cancelado) {
            for (const auto& [meio, valor] : pagamentos.porMeio) {
                dia.meios[meio] += valor;
            }
            if (pagamentos.incerto && pagamentos.soma - cupom.troco != cupom.total) {
                dia.meiosIncertos = Coo(cupom.coo) + " has a reversal of several payments";
            }
        }
        const bool ultimo = contexto.Ultimo().fiscal && contexto.Ultimo().coo == cupom.coo;
        if (cupom.fechado) {
            ConfereFechado(contexto, cupom, soma, pagamentos);
        } else if (!cupom.cancelado && !ultimo) {
            ConfereSemFechamento(contexto, cupom, soma, pagamentos);
        }
    }
}

} // namespace bancada
