// Random days of the register, checked against a reference that recomputes every total.
#include "tests/bancada/registro/RegistroModel.h"
#include "tests/bancada/registro/RegistroTest.h"
#include "tests/libs/RandomSeed.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace bancada
{
namespace
{

constexpr const char* UNDER_DISCOUNT =
    "the subtotal carries a discount: cancel it before anything else changes";
constexpr const char* UNDER_SURCHARGE =
    "the subtotal carries a surcharge: cancel it before anything else changes";

// Why an operation is refused on random days: no other reason is right.
struct Reasons {
    std::set<std::string> often;  // on any three hundred days
    std::set<std::string> rarely; // on some of them
};

const std::map<std::string, Reasons> REASONS = {
    {"vende",
     {{UNDER_DISCOUNT, UNDER_SURCHARGE, "the totalizer T# is not programmed",
       "the quantity must be above zero"},
      {"the unit price must be above zero", "the item's total must be above zero"}}},
    {"vende nf",
     {{UNDER_DISCOUNT, UNDER_SURCHARGE,
       "the non-fiscal totalizer # is reserved for the till's floats and withdrawals",
       "the non-fiscal totalizer # is not programmed"},
      {"the item's value must be above zero"}}},
    {"ajusta item",
     {{UNDER_DISCOUNT, UNDER_SURCHARGE, "the receipt has no item #", "item # is cancelled",
       "item # already carries a discount", "item # already carries a surcharge"},
      {"the percentage must be above zero and at most #", "the discount must be above zero",
       "the surcharge must be above zero",
       "the discount must be smaller than what it is taken from"}}},
    {"cancela ajuste item",
     {{UNDER_DISCOUNT, UNDER_SURCHARGE, "the receipt has no item #", "item # is cancelled",
       "item # carries no discount", "item # carries no surcharge"},
      {"without the surcharge the discount on item # would not leave anything: cancel the discount "
       "first"}}},
    {"cancela item",
     {{UNDER_DISCOUNT, UNDER_SURCHARGE, "the receipt has no item #", "item # is cancelled"}, {}}},
    {"ajusta subtotal",
     {{UNDER_DISCOUNT, UNDER_SURCHARGE, "the receipt has no item"},
      {"the percentage must be above zero and at most #", "the discount must be above zero",
       "the surcharge must be above zero",
       "the discount must be smaller than what it is taken from"}}},
    {"cancela ajuste subtotal",
     {{"the subtotal carries no discount", "the subtotal carries no surcharge"}, {}}},
    {"paga",
     {{"Meio de Pagamento # is not programmed",
       "Meio de Pagamento # gives no change: only # is due"},
      {"the payment must be above zero", "the receipt already has # payments"}}},
    {"estorna",
     {{"a payment is moved from one Meio de Pagamento to another",
       "only # of the receipt COO # can be moved from Meio de Pagamento #"},
      {"the change of # was given out of the means that give change: they must keep as much",
       "the receipt already has # payments"}}},
};

class RegistroAgainstModel : public RegistroTest
{
  protected:
    RegistroAgainstModel() : seed(RandomSeed()), engine(seed) {}

    std::int64_t Between(std::int64_t low, std::int64_t high)
    {
        return std::uniform_int_distribution<std::int64_t>(low, high)(engine);
    }
    bool Chance(int percent) { return Between(1, 100) <= percent; }

    RtcAbsoluteTime Pass()
    {
        now += static_cast<UINT32>(Between(1, 9));
        return RtcAbsoluteTime(now);
    }
    CupomModel& Last() { return jornada.cupons.back(); }

    // Counts what was accepted and, by its reason, what was refused, and says which it was. The
    // numbers in a reason are left out.
    bool Accepted(const char* operacao, const Refusal& refusal)
    {
        if (!refusal) {
            ++accepted[operacao];
            return true;
        }
        static const std::regex number("[0-9]+([.][0-9]+)?");
        ++refused[operacao][std::regex_replace(*refusal, number, "#")];
        return false;
    }

    void DrawVendaItem()
    {
        static const struct {
            const char* codigo;
            int numero;
            int imposto;
            int posicao;
        } places[] = {{"T", 1, 0, 0},  {"T", 2, 0, 1},  {"S", 1, 1, 0},   {"F", 1, 0, 30},
                      {"I", 1, 0, 33}, {"N", 1, 0, 36}, {"FS", 1, 1, 30}, {"T", 9, 0, 8}};
        const auto& place = places[Between(0, 7)];
        const int quantidadeDecimals = static_cast<int>(Between(0, 3));
        const int precoDecimals = static_cast<int>(Between(2, 3));
        const std::int64_t quantidade = Between(0, quantidadeDecimals == 0 ? 12 : 5000);
        const std::int64_t preco = Between(0, 30000);
        VendaItem venda{"789",
                        "ITEM",
                        "UN",
                        place.codigo,
                        place.numero,
                        {quantidade, quantidadeDecimals},
                        {preco, precoDecimals},
                        Chance(50)};
        const RtcAbsoluteTime em = Pass();
        if (!Accepted("vende", registro.CheckVendeItem(venda, em))) {
            return;
        }
        registro.VendeItem(venda, em);
        std::int64_t scale = 1; // of the product, in cents
        for (int i = 2; i < quantidadeDecimals + precoDecimals; ++i) {
            scale *= 10;
        }
        ItemModel item;
        item.imposto = place.imposto;
        item.posicao = place.posicao;
        item.bruto = (quantidade * preco + (venda.arredonda ? scale / 2 : 0)) / scale;
        Last().itens.push_back(item);
    }

    void DrawVendaItemNF()
    {
        const int totalizador = static_cast<int>(Between(2, 5));
        const Financial valor = Financial::FromCents(Between(0, 20000));
        const RtcAbsoluteTime em = Pass();
        if (!Accepted("vende nf", registro.CheckVendeItemNF(totalizador, valor, em))) {
            return;
        }
        registro.VendeItemNF(totalizador, valor, em);
        ItemModel item;
        item.posicao = totalizador - 1;
        item.bruto = ToCents(valor);
        Last().itens.push_back(item);
    }

    // An adjustment and what it comes to on `base`.
    std::pair<Ajuste, Cents> DrawAjuste(Cents base)
    {
        Ajuste ajuste;
        ajuste.operacao = Chance(50) ? DESCONTO : ACRESCIMO;
        if (Chance(50)) {
            const Cents valor = Between(0, base + 5);
            ajuste.valor = Financial::FromCents(valor).nr;
            return {ajuste, valor};
        }
        const int centesimos = static_cast<int>(Between(0, 3000));
        ajuste.tipo = PERCENTUAL;
        ajuste.valor = BigInt(centesimos);
        return {ajuste, base * centesimos / 10000};
    }

    void DrawAjusteItem()
    {
        const int count = static_cast<int>(Last().itens.size());
        const int numero = static_cast<int>(Between(0, count + 1));
        const int indice = numero == 0 ? count - 1 : numero - 1;
        const bool exists = indice >= 0 && indice < count;
        const auto index = static_cast<std::size_t>(indice);
        const auto [ajuste, valor] = DrawAjuste(exists ? Last().itens[index].Liquido() : 100);
        const RtcAbsoluteTime em = Pass();
        if (!Accepted("ajusta item", registro.CheckAjustaItem(ajuste, numero, em))) {
            return;
        }
        registro.AjustaItem(ajuste, numero, em);
        ItemModel& item = Last().itens.at(index);
        (ajuste.operacao == DESCONTO ? item.desconto : item.acrescimo) = valor;
    }

    void DrawCancelaAjusteItem()
    {
        const EOperacao operacao = Chance(50) ? DESCONTO : ACRESCIMO;
        const int numero =
            static_cast<int>(Between(0, static_cast<std::int64_t>(Last().itens.size()) + 1));
        const RtcAbsoluteTime em = Pass();
        if (!Accepted("cancela ajuste item",
                      registro.CheckCancelaAjusteItem(operacao, numero, em))) {
            return;
        }
        registro.CancelaAjusteItem(operacao, numero, em);
        ItemModel& item = Last().itens.at(static_cast<std::size_t>(numero) - 1);
        if (operacao == DESCONTO) {
            item.desconto = 0;
        } else {
            item.acrescimosCancelados += item.acrescimo;
            item.acrescimo = 0;
        }
    }

    void DrawCancelaItem()
    {
        const int numero =
            static_cast<int>(Between(0, static_cast<std::int64_t>(Last().itens.size()) + 1));
        const RtcAbsoluteTime em = Pass();
        if (!Accepted("cancela item", registro.CheckCancelaItem(numero, em))) {
            return;
        }
        registro.CancelaItem(numero, em);
        Last().itens.at(static_cast<std::size_t>(numero) - 1).cancelado = true;
    }

    void DrawAjusteSubtotal()
    {
        const auto [ajuste, valor] = DrawAjuste(Last().Total());
        const RtcAbsoluteTime em = Pass();
        if (!Accepted("ajusta subtotal", registro.CheckAjustaSubtotal(ajuste, em))) {
            return;
        }
        registro.AjustaSubtotal(ajuste, em);
        std::vector<Cents> liquidos;
        for (const ItemModel& item : Last().itens) {
            liquidos.push_back(item.cancelado ? 0 : item.Liquido());
        }
        const std::vector<Cents> shares = Share(valor, liquidos);
        for (std::size_t i = 0; i < shares.size(); ++i) {
            Last().itens[i].rateio = ajuste.operacao == DESCONTO ? -shares[i] : shares[i];
        }
    }

    void DrawCancelaAjusteSubtotal()
    {
        const EOperacao operacao = Chance(50) ? DESCONTO : ACRESCIMO;
        const RtcAbsoluteTime em = Pass();
        if (!Accepted("cancela ajuste subtotal",
                      registro.CheckCancelaAjusteSubtotal(operacao, em))) {
            return;
        }
        registro.CancelaAjusteSubtotal(operacao, em);
        for (ItemModel& item : Last().itens) {
            item.acrescimosCancelados += std::max<Cents>(item.rateio, 0);
            item.rateio = 0;
        }
    }

    void CancelaCupomEmEmissaoToo()
    {
        const RtcAbsoluteTime em = Pass();
        ASSERT_TRUE(Accepted("cancela em emissao", registro.CheckCancelaCupomEmEmissao(em)));
        registro.CancelaCupomEmEmissao(em);
        Last().valid = false;
        Last().end = now;
    }

    void PayAndClose()
    {
        CupomModel& cupom = Last();
        while (cupom.Pago() < cupom.Total()) {
            const int meio = static_cast<int>(Between(1, 4));
            const Cents missing = cupom.Total() - cupom.Pago();
            const bool last = cupom.pagamentos.size() == 29;
            const Cents valor = last ? missing : Between(0, missing + 500);
            const RtcAbsoluteTime em = Pass();
            const Financial pago = Financial::FromCents(valor);
            if (!Accepted("paga", registro.CheckEfetuaPagamento(meio, pago, em))) {
                continue;
            }
            registro.EfetuaPagamento(meio, pago, em);
            cupom.pagamentos.emplace_back(meio - 1, valor);
            if (Chance(5)) {
                CancelaCupomEmEmissaoToo();
                return;
            }
            if (Chance(10)) {
                DrawEstorno();
            }
        }
        const RtcAbsoluteTime em = Pass();
        EXPECT_EQ(ToCents(registro.Cupom_GetTotal()), cupom.Total());
        EXPECT_EQ(ToCents(registro.Cupom_GetTroco()), cupom.Troco());
        if (cupom.fiscal) {
            ASSERT_TRUE(Accepted("fecha", registro.CheckFechaCupom("", em)));
            registro.FechaCupom("", em);
        } else {
            ASSERT_TRUE(Accepted("fecha nf", registro.CheckFechaCNF(em)));
            registro.FechaCNF(em);
        }
        cupom.end = now;
    }

    void DrawEstorno()
    {
        const int origem = static_cast<int>(Between(1, 3));
        const int destino = static_cast<int>(Between(1, 3));
        const Financial valor = Financial::FromCents(Between(1, 3000));
        const RtcAbsoluteTime em = Pass();
        if (!Accepted("estorna", registro.CheckEstornaMeioPagamento(origem, destino, valor, em))) {
            return;
        }
        registro.EstornaMeioPagamento(origem, destino, valor, em);
        if (Last().end != 0) {
            ++coo;
            ++gnf;
        }
        Last().pagamentos.emplace_back(origem - 1, -ToCents(valor));
        Last().pagamentos.emplace_back(destino - 1, ToCents(valor));
    }

    void DrawCupom()
    {
        const bool fiscal = Chance(75);
        const RtcAbsoluteTime em = Pass();
        const Refusal refusal =
            fiscal ? registro.CheckAbreCupom({}, em) : registro.CheckAbreCNF({}, em);
        ASSERT_TRUE(Accepted(fiscal ? "abre" : "abre nf", refusal)) << *refusal;
        if (fiscal) {
            registro.AbreCupom({}, em);
        } else {
            registro.AbreCNF({}, em);
        }
        jornada.cupons.emplace_back();
        ++coo;
        ++(fiscal ? ccf : gnf);
        Last().fiscal = fiscal;
        Last().abertura = now;

        const int steps = static_cast<int>(Between(1, 25));
        for (int i = 0; i < steps; ++i) {
            const std::int64_t which = Between(0, 99);
            if (which < 55) {
                fiscal ? DrawVendaItem() : DrawVendaItemNF();
            } else if (which < 72) {
                DrawAjusteItem();
            } else if (which < 79) {
                DrawCancelaAjusteItem();
            } else if (which < 85) {
                DrawCancelaItem();
            } else if (which < 92) {
                DrawAjusteSubtotal();
            } else {
                DrawCancelaAjusteSubtotal();
            }
            ASSERT_EQ(ToCents(registro.Cupom_GetTotal()), Last().Total());
        }
        if (Last().Total() == 0 || Chance(10)) {
            CancelaCupomEmEmissaoToo();
            return;
        }
        PayAndClose();
        if (!Last().valid) {
            return;
        }
        if (Chance(10)) {
            DrawEstorno();
        }
        if (Chance(12)) {
            const RtcAbsoluteTime later = Pass();
            ASSERT_TRUE(Accepted("cancela cupom", registro.CheckCancelaCupom(0, later)));
            registro.CancelaCupom(0, later);
            ++coo;
            gnf += fiscal ? 0 : 1;
            Last().valid = false;
        }
    }

    void DrawMovimentoDeCaixa()
    {
        const ETipoOPNF operacao = Chance(50) ? FUNDO_TROCO : SANGRIA;
        const Financial valor = Financial::FromCents(Between(1, 50000));
        const RtcAbsoluteTime em = Pass();
        ASSERT_TRUE(Accepted("caixa", registro.CheckMovimentaCaixa(operacao, valor, em)));
        registro.MovimentaCaixa(operacao, valor, em);
        jornada.cupons.emplace_back();
        ++coo;
        ++gnf;
        Last().fiscal = false;
        if (operacao == FUNDO_TROCO) {
            Last().pagamentos.emplace_back(0, ToCents(valor)); // cash, paid to the cent
        } else {
            Last().sangria = true;
        }
        ItemModel item;
        item.posicao = operacao == FUNDO_TROCO ? 0 : 1;
        item.bruto = ToCents(valor);
        Last().itens.push_back(item);
    }

    void CheckJornada(Cents gtBefore)
    {
        constexpr int F = BC_IND_FISCAL_ULTIMA_RZ;
        Cents liquidos = 0;
        for (int imposto = 0; imposto < 2; ++imposto) {
            Cents sum = 0;
            for (int posicao = 0; posicao < 39; ++posicao) {
                const Cents total = ToCents(registro.Totalizador_GetTot(F, imposto, posicao));
                EXPECT_EQ(total, jornada.Totalizador(true, imposto, posicao)) << imposto << posicao;
                EXPECT_EQ(registro.Totalizador_GetTot(BC_IND_FISCAL, imposto, posicao),
                          Financial());
                sum += total;
            }
            EXPECT_EQ(ToCents(registro.Totalizador_GetSoma_Tot_VL(F, imposto)), sum);
            EXPECT_EQ(ToCents(registro.Totalizador_GetSoma_Tot_Desc(F, imposto)),
                      jornada.Descontos(imposto));
            EXPECT_EQ(ToCents(registro.Totalizador_GetSoma_Tot_Acr(F, imposto)),
                      jornada.Acrescimos(imposto));
            EXPECT_EQ(ToCents(registro.Totalizador_GetSoma_Tot_Canc(F, imposto)),
                      jornada.Cancelamentos(imposto));
            liquidos += sum;
        }
        const Cents impostos[] = {jornada.Totalizador(true, 0, 0) * 18 / 100,
                                  jornada.Totalizador(true, 0, 1) * 7 / 100,
                                  jornada.Totalizador(true, 1, 0) * 5 / 100};
        EXPECT_EQ(ToCents(registro.Totalizador_GetSoma_TotTrib(F, 0)), impostos[0] + impostos[1]);
        EXPECT_EQ(ToCents(registro.Totalizador_GetSoma_TotTrib(F, 1)), impostos[2]);
        for (int posicao = 0; posicao < 39; ++posicao) {
            EXPECT_EQ(
                ToCents(registro.Totalizador_GetTotalNF(BC_IND_NAO_FISCAL_ULTIMA_RZ, posicao)),
                jornada.Totalizador(false, 0, posicao))
                << posicao;
        }
        Cents meios = 0;
        for (int posicao = 0; posicao < 20; ++posicao) {
            const Cents meio = ToCents(registro.BaseFormasPagamento_GetFPTotal(posicao));
            EXPECT_EQ(meio, jornada.Meio(posicao)) << posicao;
            meios += meio;
        }
        const Cents troco = ToCents(registro.BaseFormasPagamento_GetTrocoTotal());
        EXPECT_EQ(troco, jornada.Troco());
        EXPECT_EQ(registro.Jornada_GetTempoEmitindoDocFiscal().s, jornada.Emitindo());

        // What must hold on every closed day, among the register's own answers.
        const Cents vb = ToCents(registro.Totalizador_GetVB(F));
        EXPECT_EQ(vb, jornada.VendaBruta());
        EXPECT_EQ(vb, liquidos + ToCents(registro.Totalizador_GetSoma_Tot_Desc(F, 0)) +
                          ToCents(registro.Totalizador_GetSoma_Tot_Desc(F, 1)) +
                          ToCents(registro.Totalizador_GetSoma_Tot_Canc(F, 0)) +
                          ToCents(registro.Totalizador_GetSoma_Tot_Canc(F, 1)));
        EXPECT_EQ(liquidos, jornada.Valid(true));
        EXPECT_EQ(meios - troco, jornada.Valid(true) + jornada.Valid(false));
        EXPECT_EQ(ToCents(registro.Totalizador_GetGT()), gtBefore + vb);
    }

    std::uint32_t seed;
    std::mt19937 engine;
    JornadaModel jornada;
    int coo = 0; // the counters, as the reference counts documents
    int ccf = 0;
    int gnf = 0;
    std::map<std::string, int> accepted;
    std::map<std::string, std::map<std::string, int>> refused;
};

TEST_F(RegistroAgainstModel, EveryClosedDayAgreesWithTheReferenceAndWithItself)
{
    SCOPED_TRACE("seed " + std::to_string(seed));
    constexpr int JORNADAS = 300;
    for (int numero = 0; numero < JORNADAS && !HasFailure(); ++numero) {
        now = NINE + static_cast<UINT32>(numero) * A_DAY;
        jornada = JornadaModel();
        const Cents gtBefore = ToCents(registro.Totalizador_GetGT());
        const int cupons = static_cast<int>(Between(0, 12));
        for (int i = 0; i < cupons && !HasFailure(); ++i) {
            Chance(12) ? DrawMovimentoDeCaixa() : DrawCupom();
        }
        ReducaoZ();
        CheckJornada(gtBefore);
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
        EXPECT_GT(accepted[operacao], 20) << operacao;
    }
    for (const auto& [operacao, reasons] : REASONS) {
        int count = 0;
        for (const auto& [reason, times] : refused[operacao]) {
            EXPECT_EQ(reasons.often.count(reason) + reasons.rarely.count(reason), 1u)
                << operacao << ": " << reason;
            count += times;
        }
        EXPECT_GT(count, 20) << operacao;
        for (const std::string& reason : reasons.often) {
            EXPECT_GT(refused[operacao][reason], 0) << operacao << ": " << reason;
        }
        refused.erase(operacao);
    }
    EXPECT_TRUE(refused.empty()) << refused.begin()->first;
}

} // namespace
} // namespace bancada
