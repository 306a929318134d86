// Random days of the register, checked against a reference that keeps its own record of what was
// accepted and recomputes every total from it. The reference shares no arithmetic with the
// register: it counts cents in 64-bit integers.
#include "tests/bancada/RegistroTeste.h"
#include "tests/libs/RandomSeed.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace bancada
{
namespace
{

using Centavos = std::int64_t;

Centavos EmCentavos(const Financial& valor)
{
    EXPECT_TRUE(valor.nr.FitsInt64());
    EXPECT_EQ(valor.nr.ToInt64() % 100, 0) << "an amount is whole cents";
    return valor.nr.ToInt64() / 100;
}

// --- The reference ------------------------------------------------------------------------------

struct ItemModelo {
    int imposto = 0;
    int posicao = 0;
    Centavos bruto = 0;
    Centavos desconto = 0;
    Centavos acrescimo = 0;
    Centavos acrescimosCancelados = 0; // its own and its shares of the subtotal's
    Centavos rateio = 0;               // negative for a discount
    bool cancelado = false;

    Centavos Liquido() const { return bruto - desconto + acrescimo; }
    Centavos Final() const { return Liquido() + rateio; }
};

struct CupomModelo {
    bool fiscal = true;
    bool valido = true;
    bool caixa = false;
    std::vector<ItemModelo> itens;
    std::vector<std::pair<int, Centavos>> pagamentos; // position, amount
    UINT32 abertura = 0;
    UINT32 fim = 0;

    Centavos Total() const
    {
        Centavos soma = 0;
        for (const ItemModelo& item : itens) {
            soma += item.cancelado ? 0 : item.Final();
        }
        return soma;
    }
    Centavos Pago() const
    {
        Centavos soma = 0;
        for (const auto& pagamento : pagamentos) {
            soma += pagamento.second;
        }
        return soma;
    }
    Centavos Troco() const { return std::max<Centavos>(Pago() - Total(), 0); }
};

// Shares `ajuste` by handing out its cents one at a time after the whole parts: each to the item
// that is furthest below its exact share, the first of equals.
std::vector<Centavos> Reparte(Centavos ajuste, const std::vector<Centavos>& liquidos)
{
    Centavos soma = 0;
    for (const Centavos liquido : liquidos) {
        soma += liquido;
    }
    std::vector<Centavos> partes;
    Centavos sobra = ajuste;
    for (const Centavos liquido : liquidos) {
        partes.push_back(ajuste * liquido / soma);
        sobra -= partes.back();
    }
    for (; sobra > 0; --sobra) {
        std::size_t escolhido = 0;
        Centavos maior = -soma;
        for (std::size_t i = 0; i < liquidos.size(); ++i) {
            const Centavos falta = ajuste * liquidos[i] - partes[i] * soma;
            if (falta > maior) {
                maior = falta;
                escolhido = i;
            }
        }
        ++partes[escolhido];
    }
    return partes;
}

struct DiaModelo {
    std::vector<CupomModelo> cupons;

    template <class F>
    void ParaCadaItem(bool fiscal, F f) const
    {
        for (const CupomModelo& cupom : cupons) {
            if (cupom.fiscal == fiscal) {
                for (const ItemModelo& item : cupom.itens) {
                    f(cupom, item);
                }
            }
        }
    }
    Centavos Totalizador(bool fiscal, int imposto, int posicao) const
    {
        Centavos soma = 0;
        ParaCadaItem(fiscal, [&](const CupomModelo& cupom, const ItemModelo& item) {
            if (cupom.valido && !item.cancelado && item.imposto == imposto &&
                item.posicao == posicao) {
                soma += item.Final();
            }
        });
        return soma;
    }
    Centavos Descontos(int imposto) const
    {
        Centavos soma = 0;
        ParaCadaItem(true, [&](const CupomModelo&, const ItemModelo& item) {
            if (item.imposto == imposto) {
                soma += item.desconto + std::max<Centavos>(-item.rateio, 0);
            }
        });
        return soma;
    }
    Centavos Acrescimos(int imposto) const
    {
        Centavos soma = 0;
        ParaCadaItem(true, [&](const CupomModelo&, const ItemModelo& item) {
            if (item.imposto == imposto) {
                soma +=
                    item.acrescimo + item.acrescimosCancelados + std::max<Centavos>(item.rateio, 0);
            }
        });
        return soma;
    }
    Centavos Cancelamentos(int imposto) const
    {
        Centavos soma = 0;
        ParaCadaItem(true, [&](const CupomModelo& cupom, const ItemModelo& item) {
            if (item.imposto == imposto) {
                soma += item.acrescimosCancelados +
                        (item.cancelado || !cupom.valido ? item.Final() : 0);
            }
        });
        return soma;
    }
    Centavos VendaBruta() const
    {
        Centavos soma = Acrescimos(0) + Acrescimos(1);
        ParaCadaItem(true, [&](const CupomModelo&, const ItemModelo& item) { soma += item.bruto; });
        return soma;
    }
    Centavos Meio(int posicao) const
    {
        Centavos soma = 0;
        for (const CupomModelo& cupom : cupons) {
            if (cupom.valido) {
                for (const auto& pagamento : cupom.pagamentos) {
                    soma += pagamento.first == posicao ? pagamento.second : 0;
                }
            }
        }
        return soma;
    }
    Centavos Troco() const
    {
        Centavos soma = 0;
        for (const CupomModelo& cupom : cupons) {
            soma += cupom.valido && !cupom.caixa ? cupom.Troco() : 0;
        }
        return soma;
    }
    Centavos Validos(bool fiscal) const
    {
        Centavos soma = 0;
        for (const CupomModelo& cupom : cupons) {
            if (cupom.fiscal == fiscal && cupom.valido && !cupom.caixa) {
                soma += cupom.Total();
            }
        }
        return soma;
    }
    UINT32 Emitindo() const
    {
        UINT32 soma = 0;
        for (const CupomModelo& cupom : cupons) {
            if (cupom.fiscal) {
                soma += cupom.fim - cupom.abertura;
            }
        }
        return soma;
    }
};

// --- The drawing of days ------------------------------------------------------------------------

class RegistroDias : public RegistroTeste
{
  protected:
    RegistroDias() : semente(RandomSeed()), sorteio(semente) {}

    std::int64_t Entre(std::int64_t menor, std::int64_t maior)
    {
        return std::uniform_int_distribution<std::int64_t>(menor, maior)(sorteio);
    }
    bool Chance(int porCento) { return Entre(1, 100) <= porCento; }

    RtcAbsoluteTime Passa()
    {
        agora += static_cast<UINT32>(Entre(1, 9));
        return RtcAbsoluteTime(agora);
    }
    CupomModelo& Ultimo() { return dia.cupons.back(); }

    // Counts what was accepted and what was refused, and says which it was.
    bool Aceito(const char* operacao, const Refusal& refusal)
    {
        ++(refusal ? recusados : aceitos)[operacao];
        return !refusal;
    }

    void SorteiaVenda()
    {
        static const struct {
            const char* codigo;
            int numero;
            int imposto;
            int posicao;
        } LUGARES[] = {{"T", 1, 0, 0},  {"T", 2, 0, 1},  {"S", 1, 1, 0},   {"F", 1, 0, 30},
                       {"I", 1, 0, 33}, {"N", 1, 0, 36}, {"FS", 1, 1, 30}, {"T", 9, 0, 8}};
        const auto& lugar = LUGARES[Entre(0, 7)];
        const int casasQ = static_cast<int>(Entre(0, 3));
        const int casasV = static_cast<int>(Entre(2, 3));
        const std::int64_t quantidade = Entre(0, casasQ == 0 ? 12 : 5000);
        const std::int64_t preco = Entre(0, 30000);
        VendaItem venda{"789",           "ITEM",       "UN",
                        lugar.codigo,    lugar.numero, {quantidade, casasQ},
                        {preco, casasV}, Chance(50)};
        const RtcAbsoluteTime em = Passa();
        if (!Aceito("vende", registro.CheckVendeItem(venda, em))) {
            return;
        }
        registro.VendeItem(venda, em);
        std::int64_t escala = 1; // of the product, in cents
        for (int i = 2; i < casasQ + casasV; ++i) {
            escala *= 10;
        }
        ItemModelo item;
        item.imposto = lugar.imposto;
        item.posicao = lugar.posicao;
        item.bruto = (quantidade * preco + (venda.arredonda ? escala / 2 : 0)) / escala;
        Ultimo().itens.push_back(item);
    }

    void SorteiaVendaNF()
    {
        const int totalizador = static_cast<int>(Entre(2, 5));
        const Financial valor = Financial::FromCents(Entre(0, 20000));
        const RtcAbsoluteTime em = Passa();
        if (!Aceito("vende nf", registro.CheckVendeItemNF(totalizador, valor, em))) {
            return;
        }
        registro.VendeItemNF(totalizador, valor, em);
        ItemModelo item;
        item.posicao = totalizador - 1;
        item.bruto = EmCentavos(valor);
        Ultimo().itens.push_back(item);
    }

    // An adjustment and what it comes to on `base`.
    std::pair<Ajuste, Centavos> SorteiaAjuste(Centavos base)
    {
        Ajuste ajuste;
        ajuste.operacao = Chance(50) ? DESCONTO : ACRESCIMO;
        if (Chance(50)) {
            const Centavos valor = Entre(0, base + 5);
            ajuste.valor = Financial::FromCents(valor).nr;
            return {ajuste, valor};
        }
        const int centesimos = static_cast<int>(Entre(0, 3000));
        ajuste.tipo = PERCENTUAL;
        ajuste.valor = BigInt(centesimos);
        return {ajuste, base * centesimos / 10000};
    }

    void SorteiaAjusteItem()
    {
        const int quantos = static_cast<int>(Ultimo().itens.size());
        const int numero = static_cast<int>(Entre(0, quantos + 1));
        const int indice = numero == 0 ? quantos - 1 : numero - 1;
        const bool existe = indice >= 0 && indice < quantos;
        const auto indiceItem = static_cast<std::size_t>(indice);
        const auto [ajuste, valor] =
            SorteiaAjuste(existe ? Ultimo().itens[indiceItem].Liquido() : 100);
        const RtcAbsoluteTime em = Passa();
        if (!Aceito("ajusta item", registro.CheckAjustaItem(ajuste, numero, em))) {
            return;
        }
        registro.AjustaItem(ajuste, numero, em);
        ItemModelo& item = Ultimo().itens.at(indiceItem);
        (ajuste.operacao == DESCONTO ? item.desconto : item.acrescimo) = valor;
    }

    void SorteiaCancelaAjusteItem()
    {
        const EOperacao operacao = Chance(50) ? DESCONTO : ACRESCIMO;
        const int numero =
            static_cast<int>(Entre(0, static_cast<std::int64_t>(Ultimo().itens.size()) + 1));
        const RtcAbsoluteTime em = Passa();
        if (!Aceito("cancela ajuste item", registro.CheckCancelaAjusteItem(operacao, numero, em))) {
            return;
        }
        registro.CancelaAjusteItem(operacao, numero, em);
        ItemModelo& item = Ultimo().itens.at(static_cast<std::size_t>(numero) - 1);
        if (operacao == DESCONTO) {
            item.desconto = 0;
        } else {
            item.acrescimosCancelados += item.acrescimo;
            item.acrescimo = 0;
        }
    }

    void SorteiaCancelaItem()
    {
        const int numero =
            static_cast<int>(Entre(0, static_cast<std::int64_t>(Ultimo().itens.size()) + 1));
        const RtcAbsoluteTime em = Passa();
        if (!Aceito("cancela item", registro.CheckCancelaItem(numero, em))) {
            return;
        }
        registro.CancelaItem(numero, em);
        Ultimo().itens.at(static_cast<std::size_t>(numero) - 1).cancelado = true;
    }

    void SorteiaAjusteSubtotal()
    {
        const auto [ajuste, valor] = SorteiaAjuste(Ultimo().Total());
        const RtcAbsoluteTime em = Passa();
        if (!Aceito("ajusta subtotal", registro.CheckAjustaSubtotal(ajuste, em))) {
            return;
        }
        registro.AjustaSubtotal(ajuste, em);
        std::vector<Centavos> liquidos;
        for (const ItemModelo& item : Ultimo().itens) {
            liquidos.push_back(item.cancelado ? 0 : item.Liquido());
        }
        const std::vector<Centavos> partes = Reparte(valor, liquidos);
        for (std::size_t i = 0; i < partes.size(); ++i) {
            Ultimo().itens[i].rateio = ajuste.operacao == DESCONTO ? -partes[i] : partes[i];
        }
    }

    void SorteiaCancelaAjusteSubtotal()
    {
        const EOperacao operacao = Chance(50) ? DESCONTO : ACRESCIMO;
        const RtcAbsoluteTime em = Passa();
        if (!Aceito("cancela ajuste subtotal", registro.CheckCancelaAjusteSubtotal(operacao, em))) {
            return;
        }
        registro.CancelaAjusteSubtotal(operacao, em);
        for (ItemModelo& item : Ultimo().itens) {
            item.acrescimosCancelados += std::max<Centavos>(item.rateio, 0);
            item.rateio = 0;
        }
    }

    void CancelaEmEmissao()
    {
        const RtcAbsoluteTime em = Passa();
        ASSERT_TRUE(Aceito("cancela em emissao", registro.CheckCancelaCupomEmEmissao(em)));
        registro.CancelaCupomEmEmissao(em);
        Ultimo().valido = false;
        Ultimo().fim = agora;
    }

    void PagaEFecha()
    {
        CupomModelo& cupom = Ultimo();
        while (cupom.Pago() < cupom.Total()) {
            const int meio = static_cast<int>(Entre(1, 4));
            const Centavos falta = cupom.Total() - cupom.Pago();
            const bool ultimo = cupom.pagamentos.size() == 29;
            const Centavos valor = ultimo ? falta : Entre(0, falta + 500);
            const RtcAbsoluteTime em = Passa();
            const Financial pago = Financial::FromCents(valor);
            if (!Aceito("paga", registro.CheckEfetuaPagamento(meio, pago, em))) {
                continue;
            }
            registro.EfetuaPagamento(meio, pago, em);
            cupom.pagamentos.emplace_back(meio - 1, valor);
            if (Chance(5)) {
                CancelaEmEmissao();
                return;
            }
            if (Chance(10)) {
                SorteiaEstorno();
            }
        }
        const RtcAbsoluteTime em = Passa();
        EXPECT_EQ(EmCentavos(registro.Cupom_GetTotal()), cupom.Total());
        EXPECT_EQ(EmCentavos(registro.Cupom_GetTroco()), cupom.Troco());
        if (cupom.fiscal) {
            ASSERT_TRUE(Aceito("fecha", registro.CheckFechaCupom("", em)));
            registro.FechaCupom("", em);
        } else {
            ASSERT_TRUE(Aceito("fecha nf", registro.CheckFechaCNF(em)));
            registro.FechaCNF(em);
        }
        cupom.fim = agora;
    }

    void SorteiaEstorno()
    {
        const int origem = static_cast<int>(Entre(1, 3));
        const int destino = static_cast<int>(Entre(1, 3));
        const Financial valor = Financial::FromCents(Entre(1, 3000));
        const RtcAbsoluteTime em = Passa();
        if (!Aceito("estorna", registro.CheckEstornaMeioPagamento(origem, destino, valor, em))) {
            return;
        }
        registro.EstornaMeioPagamento(origem, destino, valor, em);
        if (Ultimo().fim != 0) {
            ++coo;
            ++gnf;
        }
        Ultimo().pagamentos.emplace_back(origem - 1, -EmCentavos(valor));
        Ultimo().pagamentos.emplace_back(destino - 1, EmCentavos(valor));
    }

    void SorteiaCupom()
    {
        const bool fiscal = Chance(75);
        const RtcAbsoluteTime em = Passa();
        const Refusal refusal =
            fiscal ? registro.CheckAbreCupom({}, em) : registro.CheckAbreCNF({}, em);
        ASSERT_TRUE(Aceito(fiscal ? "abre" : "abre nf", refusal)) << *refusal;
        if (fiscal) {
            registro.AbreCupom({}, em);
        } else {
            registro.AbreCNF({}, em);
        }
        dia.cupons.emplace_back();
        ++coo;
        ++(fiscal ? ccf : gnf);
        Ultimo().fiscal = fiscal;
        Ultimo().abertura = agora;

        const int passos = static_cast<int>(Entre(1, 25));
        for (int i = 0; i < passos; ++i) {
            const std::int64_t qual = Entre(0, 99);
            if (qual < 55) {
                fiscal ? SorteiaVenda() : SorteiaVendaNF();
            } else if (qual < 72) {
                SorteiaAjusteItem();
            } else if (qual < 79) {
                SorteiaCancelaAjusteItem();
            } else if (qual < 85) {
                SorteiaCancelaItem();
            } else if (qual < 92) {
                SorteiaAjusteSubtotal();
            } else {
                SorteiaCancelaAjusteSubtotal();
            }
            ASSERT_EQ(EmCentavos(registro.Cupom_GetTotal()), Ultimo().Total());
        }
        if (Ultimo().Total() == 0 || Chance(10)) {
            CancelaEmEmissao();
            return;
        }
        PagaEFecha();
        if (!Ultimo().valido) {
            return;
        }
        if (Chance(10)) {
            SorteiaEstorno();
        }
        if (Chance(12)) {
            const RtcAbsoluteTime depois = Passa();
            ASSERT_TRUE(Aceito("cancela cupom", registro.CheckCancelaCupom(0, depois)));
            registro.CancelaCupom(0, depois);
            ++coo;
            gnf += fiscal ? 0 : 1;
            Ultimo().valido = false;
        }
    }

    void SorteiaCaixa()
    {
        const ETipoOPNF operacao = Chance(50) ? FUNDO_TROCO : SANGRIA;
        const Financial valor = Financial::FromCents(Entre(1, 50000));
        const RtcAbsoluteTime em = Passa();
        ASSERT_TRUE(Aceito("caixa", registro.CheckMovimentaCaixa(operacao, valor, em)));
        registro.MovimentaCaixa(operacao, valor, em);
        dia.cupons.emplace_back();
        ++coo;
        ++gnf;
        Ultimo().fiscal = false;
        Ultimo().caixa = true;
        ItemModelo item;
        item.posicao = operacao == FUNDO_TROCO ? 0 : 1;
        item.bruto = EmCentavos(valor);
        Ultimo().itens.push_back(item);
    }

    void ConfereDia(Centavos gtAntes)
    {
        constexpr int F = BC_IND_FISCAL_ULTIMA_RZ;
        Centavos liquidos = 0;
        for (int imposto = 0; imposto < 2; ++imposto) {
            Centavos soma = 0;
            for (int posicao = 0; posicao < 39; ++posicao) {
                const Centavos total = EmCentavos(registro.Totalizador_GetTot(F, imposto, posicao));
                EXPECT_EQ(total, dia.Totalizador(true, imposto, posicao)) << imposto << posicao;
                EXPECT_EQ(registro.Totalizador_GetTot(BC_IND_FISCAL, imposto, posicao),
                          Financial());
                soma += total;
            }
            EXPECT_EQ(EmCentavos(registro.Totalizador_GetSoma_Tot_VL(F, imposto)), soma);
            EXPECT_EQ(EmCentavos(registro.Totalizador_GetSoma_Tot_Desc(F, imposto)),
                      dia.Descontos(imposto));
            EXPECT_EQ(EmCentavos(registro.Totalizador_GetSoma_Tot_Acr(F, imposto)),
                      dia.Acrescimos(imposto));
            EXPECT_EQ(EmCentavos(registro.Totalizador_GetSoma_Tot_Canc(F, imposto)),
                      dia.Cancelamentos(imposto));
            liquidos += soma;
        }
        const Centavos impostos[] = {dia.Totalizador(true, 0, 0) * 18 / 100,
                                     dia.Totalizador(true, 0, 1) * 7 / 100,
                                     dia.Totalizador(true, 1, 0) * 5 / 100};
        EXPECT_EQ(EmCentavos(registro.Totalizador_GetSoma_TotTrib(F, 0)),
                  impostos[0] + impostos[1]);
        EXPECT_EQ(EmCentavos(registro.Totalizador_GetSoma_TotTrib(F, 1)), impostos[2]);
        for (int posicao = 0; posicao < 39; ++posicao) {
            EXPECT_EQ(
                EmCentavos(registro.Totalizador_GetTotalNF(BC_IND_NAO_FISCAL_ULTIMA_RZ, posicao)),
                dia.Totalizador(false, 0, posicao))
                << posicao;
        }
        Centavos meios = 0;
        for (int posicao = 0; posicao < 20; ++posicao) {
            const Centavos meio = EmCentavos(registro.BaseFormasPagamento_GetFPTotal(posicao));
            EXPECT_EQ(meio, dia.Meio(posicao)) << posicao;
            meios += meio;
        }
        const Centavos troco = EmCentavos(registro.BaseFormasPagamento_GetTrocoTotal());
        EXPECT_EQ(troco, dia.Troco());
        EXPECT_EQ(registro.Jornada_GetTempoEmitindoDocFiscal().s, dia.Emitindo());

        // What must hold on every closed day, among the register's own answers.
        const Centavos vb = EmCentavos(registro.Totalizador_GetVB(F));
        EXPECT_EQ(vb, dia.VendaBruta());
        EXPECT_EQ(vb, liquidos + EmCentavos(registro.Totalizador_GetSoma_Tot_Desc(F, 0)) +
                          EmCentavos(registro.Totalizador_GetSoma_Tot_Desc(F, 1)) +
                          EmCentavos(registro.Totalizador_GetSoma_Tot_Canc(F, 0)) +
                          EmCentavos(registro.Totalizador_GetSoma_Tot_Canc(F, 1)));
        EXPECT_EQ(liquidos, dia.Validos(true));
        EXPECT_EQ(meios - troco, dia.Validos(true) + dia.Validos(false));
        EXPECT_EQ(EmCentavos(registro.Totalizador_GetGT()), gtAntes + vb);
    }

    std::uint32_t semente;
    std::mt19937 sorteio;
    DiaModelo dia;
    int coo = 0; // the counters, as the reference counts documents
    int ccf = 0;
    int gnf = 0;
    std::map<std::string, int> aceitos;
    std::map<std::string, int> recusados;
};

TEST_F(RegistroDias, EveryClosedDayAgreesWithTheReferenceAndWithItself)
{
    SCOPED_TRACE("seed " + std::to_string(semente));
    constexpr int DIAS = 300;
    for (int numero = 0; numero < DIAS && !HasFailure(); ++numero) {
        agora = NOVE_HORAS + static_cast<UINT32>(numero) * DIA;
        dia = DiaModelo();
        const Centavos gtAntes = EmCentavos(registro.Totalizador_GetGT());
        const int cupons = static_cast<int>(Entre(0, 12));
        for (int i = 0; i < cupons && !HasFailure(); ++i) {
            Chance(12) ? SorteiaCaixa() : SorteiaCupom();
        }
        ReducaoZ();
        ConfereDia(gtAntes);
        EXPECT_EQ(Contador(COUNTER_CRZ), numero + 1);
        EXPECT_EQ(Contador(COUNTER_COO), ++coo);
        EXPECT_EQ(Contador(COUNTER_CCF), ccf);
        EXPECT_EQ(Contador(COUNTER_GNF), gnf);
    }
    // Every operation was accepted often, and was refused at times where it can be.
    for (const char* operacao :
         {"vende", "vende nf", "ajusta item", "cancela ajuste item", "cancela item",
          "ajusta subtotal", "cancela ajuste subtotal", "cancela em emissao", "paga", "fecha",
          "fecha nf", "estorna", "cancela cupom", "caixa"}) {
        EXPECT_GT(aceitos[operacao], 20) << operacao;
    }
    for (const char* operacao :
         {"vende", "vende nf", "ajusta item", "cancela ajuste item", "cancela item",
          "ajusta subtotal", "cancela ajuste subtotal", "paga", "estorna"}) {
        EXPECT_GT(recusados[operacao], 20) << operacao;
    }
}

} // namespace
} // namespace bancada
