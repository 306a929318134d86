// The words that the tests of the register are written in. Money and quantities are decimal texts.
#pragma once

#include "bancada/registro/Registro.h"

#include <gtest/gtest.h>

#include <string>

namespace bancada
{

inline Financial Dinheiro(const char* texto)
{
    Financial valor;
    if (!Financial::FromText(texto, valor)) {
        ADD_FAILURE() << "not money: " << texto;
    }
    return valor;
}

inline std::string Texto(const Financial& valor)
{
    char texto[64];
    return valor.ToString(texto, sizeof texto, FIN_STR_3, 2, 0);
}

// "1.500" is {1500, 3}.
inline Decimal Numero(const std::string& texto)
{
    Decimal numero;
    const std::size_t ponto = texto.find('.');
    numero.decimals = ponto == std::string::npos ? 0 : static_cast<int>(texto.size() - ponto - 1);
    std::string digitos = texto;
    if (ponto != std::string::npos) {
        digitos.erase(ponto, 1);
    }
    numero.unscaled = std::stoll(digitos);
    return numero;
}

constexpr UINT32 DIA = 86400;
constexpr UINT32 HORA = 3600;
// 2024-03-04, a Monday, at midnight and at nine.
constexpr UINT32 MEIA_NOITE = 1709510400;
constexpr UINT32 NOVE_HORAS = MEIA_NOITE + 9 * HORA;

constexpr int DINHEIRO = 1; // payment means that gives change
constexpr int CARTAO = 2;   // payment means with voucher: gives none
constexpr int CHEQUE = 3;   // gives change

// A register with the rates T1 18.00, T2 7.00, S1 5.00, the totalizers F1, I1, N1, FS1, the payment
// means above and the non-fiscal totalizers 3 and 4. Every operation takes one second.
class RegistroTeste : public ::testing::Test
{
  protected:
    RegistroTeste()
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

    RtcAbsoluteTime Agora() { return RtcAbsoluteTime(agora++); }

    // --- What is refused: the reason, or "" for what would be accepted -----------------------

    static std::string Motivo(const Refusal& refusal) { return refusal.value_or(""); }

    // --- Operations that must be accepted ----------------------------------------------------

    void Accept(const Refusal& refusal) { EXPECT_EQ(Motivo(refusal), ""); }

    void AbreCupom()
    {
        const RtcAbsoluteTime em = Agora();
        Accept(registro.CheckAbreCupom({}, em));
        registro.AbreCupom({}, em);
    }
    static VendaItem Venda(const char* preco, const char* quantidade = "1",
                           const char* tributacao = "T", int indice = 1, bool arredonda = false)
    {
        return {"789",         "ARROZ",  "UN", tributacao, indice, Numero(quantidade),
                Numero(preco), arredonda};
    }
    void Vende(const VendaItem& venda)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckVendeItem(venda, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.VendeItem(venda, em);
    }
    void Vende(const char* preco, const char* quantidade = "1", const char* tributacao = "T",
               int indice = 1)
    {
        Vende(Venda(preco, quantidade, tributacao, indice));
    }
    static Ajuste PorValor(EOperacao operacao, const char* valor)
    {
        return {operacao, VALOR, Dinheiro(valor).nr};
    }
    static Ajuste PorPercentual(EOperacao operacao, int centesimos)
    {
        return {operacao, PERCENTUAL, BigInt(centesimos)};
    }
    void AjustaItem(const Ajuste& ajuste, int item)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckAjustaItem(ajuste, item, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.AjustaItem(ajuste, item, em);
    }
    void CancelaAjusteItem(EOperacao operacao, int item)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckCancelaAjusteItem(operacao, item, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.CancelaAjusteItem(operacao, item, em);
    }
    void AjustaSubtotal(const Ajuste& ajuste)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckAjustaSubtotal(ajuste, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.AjustaSubtotal(ajuste, em);
    }
    void CancelaAjusteSubtotal(EOperacao operacao)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckCancelaAjusteSubtotal(operacao, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.CancelaAjusteSubtotal(operacao, em);
    }
    void CancelaItem(int item)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckCancelaItem(item, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.CancelaItem(item, em);
    }
    void Paga(int meio, const char* valor)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckEfetuaPagamento(meio, Dinheiro(valor), em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.EfetuaPagamento(meio, Dinheiro(valor), em);
    }
    void FechaCupom(const std::string& mensagem = "")
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckFechaCupom(mensagem, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.FechaCupom(mensagem, em);
    }
    // A whole receipt of one item, paid in one means.
    void Cupom1(const char* preco, int meio = DINHEIRO)
    {
        AbreCupom();
        Vende(preco);
        Paga(meio, preco);
        FechaCupom();
    }
    void CancelaCupom()
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckCancelaCupom(0, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.CancelaCupom(0, em);
    }
    void CancelaCupomEmEmissao()
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckCancelaCupomEmEmissao(em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.CancelaCupomEmEmissao(em);
    }
    void Estorna(int origem, int destino, const char* valor)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal =
            registro.CheckEstornaMeioPagamento(origem, destino, Dinheiro(valor), em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.EstornaMeioPagamento(origem, destino, Dinheiro(valor), em);
    }
    void AbreCNF()
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckAbreCNF({}, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.AbreCNF({}, em);
    }
    void VendeNF(int totalizador, const char* valor)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckVendeItemNF(totalizador, Dinheiro(valor), em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.VendeItemNF(totalizador, Dinheiro(valor), em);
    }
    void FechaCNF()
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckFechaCNF(em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.FechaCNF(em);
    }
    void MovimentaCaixa(ETipoOPNF operacao, const char* valor)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckMovimentaCaixa(operacao, Dinheiro(valor), em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.MovimentaCaixa(operacao, Dinheiro(valor), em);
    }
    void AbreCCD(int meio)
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckAbreCCD(meio, em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.AbreCCD(meio, em);
    }
    void FechaCCDGerencial()
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckFechaCCDGerencial(em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.FechaCCDGerencial(em);
    }
    void ReducaoZ()
    {
        const RtcAbsoluteTime em = Agora();
        const Refusal refusal = registro.CheckReducaoZ(em);
        ASSERT_EQ(Motivo(refusal), "");
        registro.ReducaoZ(em);
    }

    // --- What the register answers, as text --------------------------------------------------

    int Contador(FISCALDATA_COUNTER_INDEX contador) { return registro.Contador_Get(contador); }
    std::string TotalT(int numero) { return Texto(registro.Totalizador_GetTot(0, 0, numero - 1)); }
    std::string TotalS(int numero) { return Texto(registro.Totalizador_GetTot(0, 1, numero - 1)); }
    std::string TotalNF(int numero)
    {
        return Texto(registro.Totalizador_GetTotalNF(BC_IND_NAO_FISCAL, numero - 1));
    }
    std::string Descontos(int imposto = 0)
    {
        return Texto(registro.Totalizador_GetSoma_Tot_Desc(0, imposto));
    }
    std::string Acrescimos(int imposto = 0)
    {
        return Texto(registro.Totalizador_GetSoma_Tot_Acr(0, imposto));
    }
    std::string Cancelamentos(int imposto = 0)
    {
        return Texto(registro.Totalizador_GetSoma_Tot_Canc(0, imposto));
    }
    std::string GT() { return Texto(registro.Totalizador_GetGT()); }
    std::string Meio(int numero)
    {
        return Texto(registro.BaseFormasPagamento_GetFPTotal(numero - 1));
    }
    std::string Troco() { return Texto(registro.BaseFormasPagamento_GetTrocoTotal()); }

    Registro registro;
    UINT32 agora = NOVE_HORAS;
};

} // namespace bancada
