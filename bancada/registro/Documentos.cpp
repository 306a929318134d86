// Readings, vouchers, management reports and reprints.
#include "bancada/Messages.h"
#include "bancada/registro/Checks.h"
#include "bancada/registro/Contadores.h"
#include "bancada/registro/Registro.h"

#include <algorithm>

namespace bancada
{

namespace
{

// The payment whose voucher, of those not reversed, was issued last. Where none has a voucher it is
// one of order 0. REQUIRES: there is a payment, as on every issued receipt.
template <class Pagamentos>
auto LastCCD(Pagamentos& pagamentos)
{
    return std::max_element(pagamentos.begin(), pagamentos.end(),
                            [](const PagamentoEfetuado& a, const PagamentoEfetuado& b) {
                                return a.ordemCCD < b.ordemCCD;
                            });
}

template <class Pagamentos>
auto FirstWithoutCCD(Pagamentos& pagamentos, int meio)
{
    return std::find_if(
        pagamentos.begin(), pagamentos.end(), [meio](const PagamentoEfetuado& pagamento) {
            return pagamento.meio == meio && pagamento.ordemCCD == 0 && !pagamento.valor.IsZero();
        });
}

Refusal CheckNoDocumento(const Memoria& memoria)
{
    if (Refusal refusal = CheckNothingOpen(memoria)) {
        return refusal;
    }
    return CheckNoIntervencao(memoria);
}

} // namespace

Refusal Registro::CheckLeituraX(EMidia, RtcAbsoluteTime) const
{
    return CheckNothingOpen(m_memoria);
}

void Registro::LeituraX(EMidia midia, RtcAbsoluteTime)
{
    if (midia != ARQUIVO) {
        AdvanceContador(m_memoria, COUNTER_COO);
    }
}

Refusal Registro::CheckLeituraMF(RtcAbsoluteTime) const
{
    return CheckNothingOpen(m_memoria);
}

void Registro::LeituraMF(RtcAbsoluteTime)
{
    AdvanceContador(m_memoria, COUNTER_COO);
}

Refusal Registro::CheckAbreCCD(int meio, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckNoDocumento(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckLastCupom(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckMeio(m_memoria, meio)) {
        return refusal;
    }
    if (m_memoria.meios[static_cast<std::size_t>(meio) - 1].vinculacao != COM_CCD) {
        return Tr("Meio de Pagamento %1 is not tied to a Comprovante de Crédito ou Débito",
                  {std::to_string(meio)});
    }
    const auto& pagamentos = m_memoria.cupom.pagamentos;
    if (FirstWithoutCCD(pagamentos, meio - 1) == pagamentos.end()) {
        return Tr(
            "the receipt COO %1 has no payment in Meio de Pagamento %2 without its Comprovante de Crédito ou Débito",
            {std::to_string(m_memoria.cupom.coo), std::to_string(meio)});
    }
    return std::nullopt;
}

void Registro::AbreCCD(int meio, RtcAbsoluteTime)
{
    auto& pagamentos = m_memoria.cupom.pagamentos;
    const int order = LastCCD(pagamentos)->ordemCCD + 1;
    FirstWithoutCCD(pagamentos, meio - 1)->ordemCCD = order;
    m_memoria.documento = EDocumentoAberto::CCD;
    AdvanceContador(m_memoria, COUNTER_COO);
    AdvanceContador(m_memoria, COUNTER_GNF);
    AdvanceContador(m_memoria, COUNTER_CDC);
}

Refusal Registro::CheckAbreEstornoCCD(RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckNoDocumento(m_memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckLastCupom(m_memoria)) {
        return refusal;
    }
    if (LastCCD(m_memoria.cupom.pagamentos)->ordemCCD == 0) {
        return Tr("the receipt COO %1 has no Comprovante de Crédito ou Débito",
                  {std::to_string(m_memoria.cupom.coo)});
    }
    return std::nullopt;
}

void Registro::AbreEstornoCCD(RtcAbsoluteTime)
{
    LastCCD(m_memoria.cupom.pagamentos)->ordemCCD = 0;
    m_memoria.documento = EDocumentoAberto::ESTORNO_CCD;
    AdvanceContador(m_memoria, COUNTER_COO);
    AdvanceContador(m_memoria, COUNTER_GNF);
}

Refusal Registro::CheckAbreGerencial(RtcAbsoluteTime) const
{
    return CheckNoDocumento(m_memoria);
}

void Registro::AbreGerencial(RtcAbsoluteTime)
{
    m_memoria.documento = EDocumentoAberto::GERENCIAL;
    AdvanceContador(m_memoria, COUNTER_COO);
    AdvanceContador(m_memoria, COUNTER_GNF);
    AdvanceContador(m_memoria, COUNTER_GRG);
}

Refusal Registro::CheckFechaCCDGerencial(RtcAbsoluteTime) const
{
    if (m_memoria.documento == EDocumentoAberto::NENHUM) {
        return Tr("no Comprovante de Crédito ou Débito and no Relatório Gerencial is open");
    }
    return std::nullopt;
}

void Registro::FechaCCDGerencial(RtcAbsoluteTime)
{
    m_memoria.documento = EDocumentoAberto::NENHUM;
}

Refusal Registro::CheckReimprimeMFD(int cooInicial, int cooFinal, RtcAbsoluteTime) const
{
    if (Refusal refusal = CheckNothingOpen(m_memoria)) {
        return refusal;
    }
    if (cooInicial < 1 || cooInicial > cooFinal) {
        return Tr("a reprint goes from a first to a last COO, both above zero");
    }
    const int last = m_memoria.contadores[COUNTER_COO];
    if (cooFinal > last) {
        return Tr("the last document is COO %1: there is no %2",
                  {std::to_string(last), std::to_string(cooFinal)});
    }
    return std::nullopt;
}

void Registro::ReimprimeMFD(int, int, RtcAbsoluteTime)
{
    AdvanceContador(m_memoria, COUNTER_COO);
}

void Registro::FinishReimprimeMFD()
{
    AdvanceContador(m_memoria, COUNTER_CFD);
}

} // namespace bancada
