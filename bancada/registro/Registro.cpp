#include "bancada/registro/Registro.h"

#include <utility>

namespace bancada
{
Memoria::Memoria() {}
Registro::Registro(Memoria inicial) : memoria(std::move(inicial)) {}
void Registro::SetRatearSubtotal(bool) {}
void Registro::SetAplicativo(const std::string&) {}
void Registro::SetVersaoSB(const std::string&) {}
Recusa Registro::PodeAbreCupom(const Consumidor&, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::AbreCupom(const Consumidor&, RtcAbsoluteTime) {}
Recusa Registro::PodeVendeItem(const VendaItem&, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::VendeItem(const VendaItem&, RtcAbsoluteTime) {}
Recusa Registro::PodeFechaCupom(const std::string&, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::FechaCupom(const std::string&, RtcAbsoluteTime) {}
Recusa Registro::PodeAjustaItem(const Ajuste&, int, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::AjustaItem(const Ajuste&, int, RtcAbsoluteTime) {}
Recusa Registro::PodeCancelaAjusteItem(EOperacao, int, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::CancelaAjusteItem(EOperacao, int, RtcAbsoluteTime) {}
Recusa Registro::PodeAjustaSubtotal(const Ajuste&, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::AjustaSubtotal(const Ajuste&, RtcAbsoluteTime) {}
Recusa Registro::PodeCancelaAjusteSubtotal(EOperacao, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::CancelaAjusteSubtotal(EOperacao, RtcAbsoluteTime) {}
Recusa Registro::PodeEfetuaPagamento(int, Financial, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::EfetuaPagamento(int, Financial, RtcAbsoluteTime) {}
Recusa Registro::PodeCancelaItem(int, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::CancelaItem(int, RtcAbsoluteTime) {}
Recusa Registro::PodeCancelaCupomEmEmissao(RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::CancelaCupomEmEmissao(RtcAbsoluteTime) {}
Recusa Registro::PodeCancelaCupom(int, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::CancelaCupom(int, RtcAbsoluteTime) {}
Recusa Registro::PodeEstornaMeioPagamento(int, int, Financial, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::EstornaMeioPagamento(int, int, Financial, RtcAbsoluteTime) {}
Recusa Registro::PodeAbreCNF(const Consumidor&, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::AbreCNF(const Consumidor&, RtcAbsoluteTime) {}
Recusa Registro::PodeVendeItemNF(int, Financial, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::VendeItemNF(int, Financial, RtcAbsoluteTime) {}
Recusa Registro::PodeFechaCNF(RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::FechaCNF(RtcAbsoluteTime) {}
Recusa Registro::PodeMovimentaCaixa(ETipoOPNF, Financial, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::MovimentaCaixa(ETipoOPNF, Financial, RtcAbsoluteTime) {}
Recusa Registro::PodeLeituraX(EMidia, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::LeituraX(EMidia, RtcAbsoluteTime) {}
Recusa Registro::PodeLeituraMF(RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::LeituraMF(RtcAbsoluteTime) {}
Recusa Registro::PodeAbreCCD(int, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::AbreCCD(int, RtcAbsoluteTime) {}
Recusa Registro::PodeAbreEstornoCCD(RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::AbreEstornoCCD(RtcAbsoluteTime) {}
Recusa Registro::PodeAbreGerencial(RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::AbreGerencial(RtcAbsoluteTime) {}
Recusa Registro::PodeFechaCCDGerencial(RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::FechaCCDGerencial(RtcAbsoluteTime) {}
Recusa Registro::PodeReimprimeMFD(int, int, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::ReimprimeMFD(int, int, RtcAbsoluteTime) {}
void Registro::ConcluiReimpressao() {}
Recusa Registro::PodeReducaoZ(RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::ReducaoZ(RtcAbsoluteTime) {}
Recusa Registro::PodeEntraIntervencao(EModoIntervencao, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::EntraIntervencao(EModoIntervencao, RtcAbsoluteTime) {}
Recusa Registro::PodeSaiIntervencao(EModoIntervencao, RtcAbsoluteTime) const
{
    return std::nullopt;
}
void Registro::SaiIntervencao(EModoIntervencao, RtcAbsoluteTime) {}
Recusa Registro::PodeProgramaAliquota(const std::string&, int, int) const
{
    return std::nullopt;
}
void Registro::ProgramaAliquota(const std::string&, int, int) {}
Recusa Registro::PodeHabilitaTotalizador(const std::string&, int, bool) const
{
    return std::nullopt;
}
void Registro::HabilitaTotalizador(const std::string&, int, bool) {}
Recusa Registro::PodeProgramaMeioPagamento(int, const std::string&, EVinculacaoCCD) const
{
    return std::nullopt;
}
void Registro::ProgramaMeioPagamento(int, const std::string&, EVinculacaoCCD) {}
Recusa Registro::PodeProgramaTotalizadorNF(int, const std::string&) const
{
    return std::nullopt;
}
void Registro::ProgramaTotalizadorNF(int, const std::string&) {}
Recusa Registro::PodeProgramaLoja(int) const
{
    return std::nullopt;
}
void Registro::ProgramaLoja(int) {}
Recusa Registro::PodeProgramaSequenciaECF(int) const
{
    return std::nullopt;
}
void Registro::ProgramaSequenciaECF(int) {}
Recusa Registro::PodeProgramaUsuario(const std::string&, const std::string&,
                                     const std::string&) const
{
    return std::nullopt;
}
void Registro::ProgramaUsuario(const std::string&, const std::string&, const std::string&) {}
Recusa Registro::PodeProgramaCNPJ_IE_IM(const std::string&, const std::string&, const std::string&,
                                        const std::string&) const
{
    return std::nullopt;
}
void Registro::ProgramaCNPJ_IE_IM(const std::string&, const std::string&, const std::string&,
                                  const std::string&)
{
}
Recusa Registro::PodeProgramaNrSerie(const std::string&, const std::string&, const std::string&,
                                     const std::string&) const
{
    return std::nullopt;
}
void Registro::ProgramaNrSerie(const std::string&, const std::string&, const std::string&,
                               const std::string&)
{
}
Recusa Registro::PodeProgramaMoeda(const std::string&) const
{
    return std::nullopt;
}
void Registro::ProgramaMoeda(const std::string&) {}
int Registro::Contador_Get(FISCALDATA_COUNTER_INDEX)
{
    return 0;
}
int Registro::Cupom_GetCOO()
{
    return 0;
}
int Registro::Cupom_GetQuantidadeDeItens()
{
    return 0;
}
char* Registro::Cupom_GetItemQtdeStr(int, char* out, int)
{
    out[0] = 0;
    return out;
}
char* Registro::Cupom_GetItemValorUnitarioStr(int, char* out, int)
{
    out[0] = 0;
    return out;
}
Financial Registro::Cupom_GetItemValorTotal(int)
{
    return {};
}
Financial Registro::Cupom_GetItemValorAcr(int)
{
    return {};
}
Financial Registro::Cupom_GetItemValorDesc(int)
{
    return {};
}
Financial Registro::Cupom_GetSubTotal()
{
    return {};
}
Financial Registro::Cupom_GetTotal()
{
    return {};
}
Financial Registro::Cupom_GetTroco()
{
    return {};
}
BOOL Registro::Cupom_GetSTAcrAplicado()
{
    return FALSE;
}
BOOL Registro::Cupom_GetSTDescAplicado()
{
    return FALSE;
}
Financial Registro::Cupom_GetSTValorDescAcr()
{
    return {};
}
Financial Registro::Cupom_GetSTValorCanceladoDescAcr()
{
    return {};
}
FD_TIPO_CUPOM Registro::Cupom_GetTipoCupom()
{
    return COMPROVANTE_NAO_FISCAL;
}
BOOL Registro::Cupom_GetRateioPorItem(Cupom*)
{
    return FALSE;
}
char* Registro::CFe_GetChaveDeBusca(char* out, int)
{
    out[0] = 0;
    return out;
}
int Registro::AssinaturaDigital_GetBase64(char*, char*)
{
    return 0;
}
char* Registro::DadosPDV_GetIdAplicativo(char* out, int)
{
    out[0] = 0;
    return out;
}
int Registro::BaseFormasPagamento_GetNumeroDeFormasDePagamento()
{
    return 0;
}
char* Registro::BaseFormasPagamento_GetMeioPagamento(int, char* out, int)
{
    out[0] = 0;
    return out;
}
BOOL Registro::BaseFormasPagamento_GetMeioPagamentoProgramado(int)
{
    return FALSE;
}
Financial Registro::BaseFormasPagamento_GetFPTotal(int)
{
    return {};
}
Financial Registro::BaseFormasPagamento_GetTrocoTotal()
{
    return {};
}
Financial Registro::Totalizador_GetGT()
{
    return {};
}
Financial Registro::Totalizador_GetGTIni(int)
{
    return {};
}
Financial Registro::Totalizador_GetVB(int)
{
    return {};
}
Financial Registro::Totalizador_GetTot(int, int, int)
{
    return {};
}
Financial Registro::Totalizador_GetTotTrib(int, int, int)
{
    return {};
}
int Registro::Totalizador_GetTotPercTrib(int, int, int)
{
    return 0;
}
BOOL Registro::Totalizador_GetTotProgramado(int, int, int)
{
    return FALSE;
}
Financial Registro::Totalizador_GetSoma_Tot_VL(int, int)
{
    return {};
}
Financial Registro::Totalizador_GetSoma_Tot_Canc(int, int)
{
    return {};
}
Financial Registro::Totalizador_GetSoma_Tot_Desc(int, int)
{
    return {};
}
Financial Registro::Totalizador_GetSoma_Tot_Acr(int, int)
{
    return {};
}
Financial Registro::Totalizador_GetSoma_TotTrib(int, int)
{
    return {};
}
Financial Registro::Totalizador_GetTotalNF(int, int)
{
    return {};
}
int Registro::Totalizador_GetTotNFProgramado(int, int)
{
    return 0;
}
char* Registro::Totalizador_GetNomeNF(int, int, char* out, int)
{
    out[0] = 0;
    return out;
}
int Registro::ResolveTotIndex(BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES, char*, int)
{
    return 0;
}
RtcAbsoluteTime Registro::Jornada_GetDataMovimento()
{
    return {};
}
RtcRelativeTime Registro::Jornada_GetTempoOperacional(RtcAbsoluteTime)
{
    return {};
}
RtcRelativeTime Registro::Jornada_GetTempoEmitindoDocFiscal()
{
    return {};
}
char* Registro::DadosContribuinte_GetRazaoSocial(char* out, int)
{
    out[0] = 0;
    return out;
}
char* Registro::DadosContribuinte_GetNomeFantasia(char* out, int)
{
    out[0] = 0;
    return out;
}
char* Registro::DadosContribuinte_GetEndereco(char* out, int)
{
    out[0] = 0;
    return out;
}
char* Registro::DadosECF_GetVersaoSB(char* out, int)
{
    out[0] = 0;
    return out;
}
char* Registro::DadosECF_GetNrOrdemSeq(char* out, int)
{
    out[0] = 0;
    return out;
}
} // namespace bancada
