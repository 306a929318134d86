#include "tests/catalogue/FixedModel.h"

#include <cstring>

namespace
{

constexpr char SIGNATURE[] = "n4bQgYhMfWWaL+qgxVrQFaO/TxsrC4Is0V1sFbDwCgg=";

char* Put(const char* text, char* out, std::size_t size)
{
    const std::size_t length = strnlen(text, size - 1);
    std::memcpy(out, text, length);
    out[length] = '\0';
    return out;
}

char* Put(const char* text, char* out, int size)
{
    return Put(text, out, static_cast<std::size_t>(size));
}

Financial Cents(int cents)
{
    return Financial::FromCents(cents);
}

} // namespace

int FixedModel::Contador_Get(FISCALDATA_COUNTER_INDEX contador)
{
    return contador == COUNTER_COO ? COO : contador == COUNTER_CRZ ? crz : 100 + contador;
}

int FixedModel::Cupom_GetCOO()
{
    return COO;
}

int FixedModel::Cupom_GetQuantidadeDeItens()
{
    return itens;
}

char* FixedModel::Cupom_GetItemQtdeStr(int, char* out, int size)
{
    return Put("1,250", out, size);
}

char* FixedModel::Cupom_GetItemValorUnitarioStr(int, char* out, int size)
{
    return Put("12,99", out, size);
}

Financial FixedModel::Cupom_GetItemValorTotal(int)
{
    return Cents(1623);
}

Financial FixedModel::Cupom_GetItemValorAcr(int)
{
    return Cents(100);
}

Financial FixedModel::Cupom_GetItemValorDesc(int)
{
    return Cents(50);
}

Financial FixedModel::Cupom_GetSubTotal()
{
    return Cents(1621377);
}

Financial FixedModel::Cupom_GetTotal()
{
    return Cents(1611377);
}

Financial FixedModel::Cupom_GetTroco()
{
    return Cents(623);
}

BOOL FixedModel::Cupom_GetSTAcrAplicado()
{
    return acrSubtotal;
}

BOOL FixedModel::Cupom_GetSTDescAplicado()
{
    return descSubtotal;
}

Financial FixedModel::Cupom_GetSTValorDescAcr()
{
    return Cents(10000);
}

Financial FixedModel::Cupom_GetSTValorCanceladoDescAcr()
{
    return Cents(10000);
}

FD_TIPO_CUPOM FixedModel::Cupom_GetTipoCupom()
{
    return tipoCupom;
}

BOOL FixedModel::Cupom_GetRateioPorItem(Cupom* copy)
{
    copy->m_iQuantidadeDeItens = itens;
    for (int i = 0; i < itens; ++i) {
        copy->m_Itens[i].m_finValorTotal = Cents(1613);
        copy->m_Itens[i].m_finValorDesc = Cents(10);
    }
    return TRUE;
}

char* FixedModel::CFe_GetChaveDeBusca(char* out, int size)
{
    return Put(chave, out, size);
}

int FixedModel::AssinaturaDigital_GetBase64(char* out, char*)
{
    Put(SIGNATURE, out, sizeof SIGNATURE);
    return static_cast<int>(sizeof SIGNATURE - 1);
}

char* FixedModel::DadosPDV_GetIdAplicativo(char* out, int size)
{
    return Put(aplicativo, out, size);
}

int FixedModel::BaseFormasPagamento_GetNumeroDeFormasDePagamento()
{
    return 20;
}

char* FixedModel::BaseFormasPagamento_GetMeioPagamento(int, char* out, int size)
{
    return Put("Cartao debito", out, size);
}

BOOL FixedModel::BaseFormasPagamento_GetMeioPagamentoProgramado(int)
{
    return semMovimento ? FALSE : TRUE;
}

Financial FixedModel::BaseFormasPagamento_GetFPTotal(int)
{
    return Cents(987654);
}

Financial FixedModel::BaseFormasPagamento_GetTrocoTotal()
{
    return Cents(12345);
}

Financial FixedModel::Totalizador_GetGT()
{
    return Cents(123456789);
}

Financial FixedModel::Totalizador_GetGTIni(int)
{
    return Cents(98765432);
}

Financial FixedModel::Totalizador_GetVB(int)
{
    return Cents(1234567);
}

Financial FixedModel::Totalizador_GetTot(int, int, int)
{
    return Cents(34567);
}

Financial FixedModel::Totalizador_GetTotTrib(int, int, int)
{
    return Cents(6222);
}

int FixedModel::Totalizador_GetTotPercTrib(int, int, int)
{
    return 1800;
}

BOOL FixedModel::Totalizador_GetTotProgramado(int, int, int)
{
    return semMovimento ? FALSE : TRUE;
}

Financial FixedModel::Totalizador_GetSoma_Tot_VL(int, int)
{
    return Cents(1000000);
}

Financial FixedModel::Totalizador_GetSoma_Tot_Canc(int, int)
{
    return Cents(5000);
}

Financial FixedModel::Totalizador_GetSoma_Tot_Desc(int, int)
{
    return Cents(12345);
}

Financial FixedModel::Totalizador_GetSoma_Tot_Acr(int, int)
{
    return Cents(678);
}

Financial FixedModel::Totalizador_GetSoma_TotTrib(int, int)
{
    return Cents(180000);
}

Financial FixedModel::Totalizador_GetTotalNF(int, int)
{
    return Cents(10000);
}

int FixedModel::Totalizador_GetTotNFProgramado(int, int)
{
    return semMovimento ? FALSE : TRUE;
}

char* FixedModel::Totalizador_GetNomeNF(int, int, char* out, int size)
{
    return Put("RECARGA CELULAR", out, size);
}

int FixedModel::ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES, char*, int number)
{
    return 29 + number;
}

RtcAbsoluteTime FixedModel::Jornada_GetDataMovimento()
{
    return RtcAbsoluteTime(1772409600); // 2026-03-02
}

RtcRelativeTime FixedModel::Jornada_GetTempoOperacional(RtcAbsoluteTime)
{
    return {36000};
}

RtcRelativeTime FixedModel::Jornada_GetTempoEmitindoDocFiscal()
{
    return {7200};
}

char* FixedModel::DadosContribuinte_GetRazaoSocial(char* out, int size)
{
    return Put(razaoSocial, out, size);
}

char* FixedModel::DadosContribuinte_GetNomeFantasia(char* out, int size)
{
    return Put(nomeFantasia, out, size);
}

char* FixedModel::DadosContribuinte_GetEndereco(char* out, int size)
{
    return Put(endereco, out, size);
}

char* FixedModel::DadosECF_GetVersaoSB(char* out, int size)
{
    return Put("01.00.02", out, size);
}

char* FixedModel::DadosECF_GetNrOrdemSeq(char* out, int size)
{
    return Put(numeroDeOrdem, out, size);
}
