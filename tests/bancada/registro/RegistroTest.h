// The words that the tests of the register are written in. Money and quantities are decimal texts.
#pragma once

#include "bancada/registro/Registro.h"

#include <gtest/gtest.h>

#include <string>

namespace bancada
{

// "1.500" is {1500, 3}.
inline Decimal Number(const std::string& text)
{
    Decimal numero;
    const std::size_t point = text.find('.');
    numero.decimals = point == std::string::npos ? 0 : static_cast<int>(text.size() - point - 1);
    std::string digits = text;
    if (point != std::string::npos) {
        digits.erase(point, 1);
    }
    numero.unscaled = std::stoll(digits);
    return numero;
}

// At most as many decimals as Financial keeps.
inline Financial Money(const char* text)
{
    const Decimal numero = Number(text);
    BigInt units = BigInt::FromInt64(numero.unscaled);
    for (int decimals = numero.decimals; decimals < 4; ++decimals) {
        units = units * BigInt(10);
    }
    return Financial(units);
}

inline std::string Text(const Financial& valor)
{
    char text[64];
    return valor.ToString(text, sizeof text, FIN_STR_3, 2, 0);
}

constexpr UINT32 A_DAY = 86400;
constexpr UINT32 AN_HOUR = 3600;
// 2024-03-04, a Monday, at midnight and at nine.
constexpr UINT32 MIDNIGHT = 1709510400;
constexpr UINT32 NINE = MIDNIGHT + 9 * AN_HOUR;

constexpr int DINHEIRO = 1; // payment means that gives change
constexpr int CARTAO = 2;   // payment means with voucher: gives none
constexpr int CHEQUE = 3;   // gives change

// A register with the rates T1 18.00, T2 7.00, S1 5.00, the totalizers F1, I1, N1, FS1, the payment
// means above and the non-fiscal totalizers 3 and 4. Every operation takes one second.
class RegistroTest : public ::testing::Test
{
  protected:
    RegistroTest()
    {
        registro.ProgramaAliquota("T", 1, 1800);
        registro.ProgramaAliquota("T", 2, 700);
        registro.ProgramaAliquota("S", 1, 500);
        for (const char* codigo : {"F", "I", "N", "FS"}) {
            registro.HabilitaTotalizador(codigo, 1, true);
        }
        registro.ProgramaMeioPagamento(DINHEIRO, "DINHEIRO", SEM_CCD);
        registro.ProgramaMeioPagamento(CARTAO, "CARTAO", COM_CCD);
        registro.ProgramaMeioPagamento(CHEQUE, "CHEQUE", SEM_CCD);
        registro.ProgramaTotalizadorNF(3, "RECEBIMENTO");
        registro.ProgramaTotalizadorNF(4, "VALE");
    }

    RtcAbsoluteTime Now() { return RtcAbsoluteTime(now++); }

    // --- What is refused: the reason, or "" for what would be accepted -----------------------

    static std::string Reason(const Refusal& refusal) { return refusal.value_or(""); }

    // --- Operations that must be accepted ----------------------------------------------------

    void ExpectAccepted(const Refusal& refusal) { EXPECT_EQ(Reason(refusal), ""); }

    void AbreCupom()
    {
        const RtcAbsoluteTime em = Now();
        ExpectAccepted(registro.CheckAbreCupom({}, em));
        registro.AbreCupom({}, em);
    }
    static VendaItem Item(const char* preco, const char* quantidade = "1",
                          const char* tributacao = "T", int indice = 1, bool arredonda = false)
    {
        return {"789",         "ARROZ",  "UN", tributacao, indice, Number(quantidade),
                Number(preco), arredonda};
    }
    void VendeItem(const VendaItem& venda)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckVendeItem(venda, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.VendeItem(venda, em);
    }
    void VendeItem(const char* preco, const char* quantidade = "1", const char* tributacao = "T",
                   int indice = 1)
    {
        VendeItem(Item(preco, quantidade, tributacao, indice));
    }
    static Ajuste ByValor(EOperacao operacao, const char* valor)
    {
        return {operacao, VALOR, Money(valor).nr};
    }
    static Ajuste ByPercentual(EOperacao operacao, int centesimos)
    {
        return {operacao, PERCENTUAL, BigInt(centesimos)};
    }
    void AjustaItem(const Ajuste& ajuste, int item)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckAjustaItem(ajuste, item, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.AjustaItem(ajuste, item, em);
    }
    void CancelaAjusteItem(EOperacao operacao, int item)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckCancelaAjusteItem(operacao, item, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.CancelaAjusteItem(operacao, item, em);
    }
    void AjustaSubtotal(const Ajuste& ajuste)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckAjustaSubtotal(ajuste, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.AjustaSubtotal(ajuste, em);
    }
    void CancelaAjusteSubtotal(EOperacao operacao)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckCancelaAjusteSubtotal(operacao, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.CancelaAjusteSubtotal(operacao, em);
    }
    void CancelaItem(int item)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckCancelaItem(item, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.CancelaItem(item, em);
    }
    void EfetuaPagamento(int meio, const char* valor)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckEfetuaPagamento(meio, Money(valor), em);
        ASSERT_EQ(Reason(refusal), "");
        registro.EfetuaPagamento(meio, Money(valor), em);
    }
    void FechaCupom(const std::string& mensagem = "")
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckFechaCupom(mensagem, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.FechaCupom(mensagem, em);
    }
    // A whole receipt of one item, paid in one means.
    void EmiteCupom(const char* preco, int meio = DINHEIRO)
    {
        AbreCupom();
        VendeItem(preco);
        EfetuaPagamento(meio, preco);
        FechaCupom();
    }
    void CancelaCupom()
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckCancelaCupom(0, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.CancelaCupom(0, em);
    }
    void CancelaCupomEmEmissao()
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckCancelaCupomEmEmissao(em);
        ASSERT_EQ(Reason(refusal), "");
        registro.CancelaCupomEmEmissao(em);
    }
    void EstornaMeioPagamento(int origem, int destino, const char* valor)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal =
            registro.CheckEstornaMeioPagamento(origem, destino, Money(valor), em);
        ASSERT_EQ(Reason(refusal), "");
        registro.EstornaMeioPagamento(origem, destino, Money(valor), em);
    }
    void AbreCNF()
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckAbreCNF({}, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.AbreCNF({}, em);
    }
    void VendeItemNF(int totalizador, const char* valor)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckVendeItemNF(totalizador, Money(valor), em);
        ASSERT_EQ(Reason(refusal), "");
        registro.VendeItemNF(totalizador, Money(valor), em);
    }
    void FechaCNF()
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckFechaCNF(em);
        ASSERT_EQ(Reason(refusal), "");
        registro.FechaCNF(em);
    }
    void MovimentaCaixa(ETipoOPNF operacao, const char* valor)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckMovimentaCaixa(operacao, Money(valor), em);
        ASSERT_EQ(Reason(refusal), "");
        registro.MovimentaCaixa(operacao, Money(valor), em);
    }
    void AbreCCD(int meio)
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckAbreCCD(meio, em);
        ASSERT_EQ(Reason(refusal), "");
        registro.AbreCCD(meio, em);
    }
    void FechaCCDGerencial()
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckFechaCCDGerencial(em);
        ASSERT_EQ(Reason(refusal), "");
        registro.FechaCCDGerencial(em);
    }
    void ReducaoZ()
    {
        const RtcAbsoluteTime em = Now();
        const Refusal refusal = registro.CheckReducaoZ(em);
        ASSERT_EQ(Reason(refusal), "");
        registro.ReducaoZ(em);
    }

    // --- What the register answers, as text --------------------------------------------------

    int Contador(FISCALDATA_COUNTER_INDEX contador) { return registro.Contador_Get(contador); }
    std::string TotalT(int numero) { return Text(registro.Totalizador_GetTot(0, 0, numero - 1)); }
    std::string TotalS(int numero) { return Text(registro.Totalizador_GetTot(0, 1, numero - 1)); }
    std::string TotalNF(int numero)
    {
        return Text(registro.Totalizador_GetTotalNF(BC_IND_NAO_FISCAL, numero - 1));
    }
    std::string Descontos(int imposto = 0)
    {
        return Text(registro.Totalizador_GetSoma_Tot_Desc(0, imposto));
    }
    std::string Acrescimos(int imposto = 0)
    {
        return Text(registro.Totalizador_GetSoma_Tot_Acr(0, imposto));
    }
    std::string Cancelamentos(int imposto = 0)
    {
        return Text(registro.Totalizador_GetSoma_Tot_Canc(0, imposto));
    }
    std::string GT() { return Text(registro.Totalizador_GetGT()); }
    std::string Meio(int numero)
    {
        return Text(registro.BaseFormasPagamento_GetFPTotal(numero - 1));
    }
    std::string Troco() { return Text(registro.BaseFormasPagamento_GetTrocoTotal()); }

    Registro registro;
    UINT32 now = NINE;
};

} // namespace bancada
