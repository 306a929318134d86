// Non-fiscal receipts against their items and payments. Floats and withdrawals are written as such
// receipts too: their single item stands on totalizer 1 or 2, and they have no payments. The change
// that a non-fiscal receipt gives is not recorded with it.
#include "bancada/conferencia/Contexto.h"

namespace bancada
{

namespace
{

struct CupomNf {
    std::int64_t coo, crz, subtotal, total, desconto, acrescimo;
    std::string hora;
    bool cancelado;
};

struct SomaItens {
    std::int64_t liquido = 0;
    bool algum = false;
    bool caixa = false;
};

class ItensNf
{
  public:
    explicit ItensNf(Contexto& contexto)
        : m_contexto(contexto),
          m_itens(contexto.Db(), "SELECT seq_item, indice_totalizador_nf, centavos(valor_total),"
                                 " centavos(valor_total_liquido), centavos(valor_acrescimo),"
                                 " centavos(valor_desconto), id_cancelado = 'S'"
                                 " FROM item_cupom_nf WHERE cont_coo = ?1 ORDER BY seq_item")
    {
    }

    SomaItens Confere(std::int64_t coo)
    {
        SomaItens soma;
        std::int64_t anterior = 0;
        m_itens.Com(coo);
        while (m_itens.Avanca()) {
            const std::int64_t item = m_itens.Inteiro(0);
            m_contexto.RelataItensAusentes(coo, anterior, item);
            anterior = item;
            soma.algum = true;
            soma.caixa = soma.caixa || m_itens.Inteiro(1) <= 2;
            if (m_itens.Inteiro(6) != 0) {
                continue;
            }
            const std::int64_t liquido = m_itens.Inteiro(3);
            const std::int64_t calculado =
                m_itens.Inteiro(2) + m_itens.Inteiro(4) - m_itens.Inteiro(5);
            if (liquido != calculado) {
                m_contexto.Relata("item-nf-total", Coo(coo) + " item " + std::to_string(item),
                                  "net value " + Dinheiro(liquido) + ", value and adjustments " +
                                      Dinheiro(calculado),
                                  coo, 0);
            }
            soma.liquido += liquido;
        }
        return soma;
    }

  private:
    Contexto& m_contexto;
    Consulta m_itens;
};

void ConfereValores(Contexto& contexto, const CupomNf& cupom, const SomaItens& itens,
                    const Pagamentos& pagamentos)
{
    if (cupom.total != cupom.subtotal - cupom.desconto + cupom.acrescimo) {
        contexto.Relata("nf-total", Coo(cupom.coo),
                        "total " + Dinheiro(cupom.total) + ", subtotal " +
                            Dinheiro(cupom.subtotal) + " less " + Dinheiro(cupom.desconto) +
                            " plus " + Dinheiro(cupom.acrescimo),
                        cupom.coo, 0);
    }
    if (itens.liquido != cupom.subtotal) {
        contexto.Relata("nf-itens", Coo(cupom.coo),
                        "live items " + Dinheiro(itens.liquido) + ", subtotal " +
                            Dinheiro(cupom.subtotal),
                        cupom.coo, 0);
    }
    if (itens.algum && !itens.caixa && !pagamentos.incerto && pagamentos.soma < cupom.total) {
        contexto.Relata("nf-pagamentos", Coo(cupom.coo),
                        "payments " + Dinheiro(pagamentos.soma) + ", total " +
                            Dinheiro(cupom.total),
                        cupom.coo, 0);
    }
}

} // namespace

void ConfereCuponsNf(Contexto& contexto)
{
    Consulta cupons(contexto.Db(),
                    "SELECT cont_coo, cont_crz, data_hora_emissao, centavos(valor_subtotal),"
                    " centavos(valor_total_cupom), centavos(valor_desconto),"
                    " centavos(valor_acrescimo), id_cancelado = 'S'"
                    " FROM cupom_nf ORDER BY rowid");
    ItensNf itens(contexto);
    while (cupons.Avanca()) {
        const CupomNf cupom = {cupons.Inteiro(0), cupons.Inteiro(1),     cupons.Inteiro(3),
                               cupons.Inteiro(4), cupons.Inteiro(5),     cupons.Inteiro(6),
                               cupons.Texto(2),   cupons.Inteiro(7) != 0};
        ++contexto.resumo.cuponsNf;
        Dia& dia = contexto.dias[cupom.crz];
        dia.Junta(cupom.coo, cupom.hora);
        if (!cupom.cancelado) {
            dia.naoFiscais += cupom.total;
        }
        if (contexto.CuponsComCoo(cupom.coo) != 1) {
            dia.meiosIncertos = Coo(cupom.coo) + " names several receipts";
            continue;
        }
        const SomaItens soma = itens.Confere(cupom.coo);
        const Pagamentos pagamentos = contexto.PagamentosDe(cupom.coo);
        if (!cupom.cancelado && !soma.caixa) {
            dia.recebido.Soma(cupom.total);
            for (const auto& [meio, valor] : pagamentos.porMeio) {
                dia.meios[meio] += valor;
            }
            if (pagamentos.incerto) {
                dia.meiosIncertos = Coo(cupom.coo) + " has a reversal of several payments";
            }
        }
        const bool semTotais = cupom.total == 0 && cupom.subtotal == 0;
        const bool ultimo = !contexto.Ultimo().fiscal && contexto.Ultimo().coo == cupom.coo;
        if (!semTotais) {
            ConfereValores(contexto, cupom, soma, pagamentos);
        } else if (!cupom.cancelado && !ultimo && (!soma.algum || soma.liquido != 0)) {
            dia.meiosIncertos = Coo(cupom.coo) + " was left open";
            contexto.Relata("nf-aberto", Coo(cupom.coo),
                            "never closed, live items " + Dinheiro(soma.liquido), cupom.coo, 0);
        }
    }
}

} // namespace bancada
