// Readings, vouchers, management reports and reprints.
#include "bancada/registro/Contadores.h"
#include "bancada/registro/Registro.h"
#include "bancada/registro/Regras.h"

#include <algorithm>

namespace bancada
{

namespace
{

// The payment whose voucher, of those not reversed, was issued last. Where none has a voucher it is
// one of order 0. REQUIRES: there is a payment, as on every issued receipt.
template <class Pagamentos>
auto UltimoCCD(Pagamentos& pagamentos)
{
    return std::max_element(pagamentos.begin(), pagamentos.end(),
                            [](const PagamentoRegistrado& a, const PagamentoRegistrado& b) {
                                return a.ordemCCD < b.ordemCCD;
                            });
}

template <class Pagamentos>
auto PrimeiroSemCCD(Pagamentos& pagamentos, int meio)
{
    return std::find_if(
        pagamentos.begin(), pagamentos.end(), [meio](const PagamentoRegistrado& pagamento) {
            return pagamento.meio == meio && pagamento.ordemCCD == 0 && !pagamento.valor.IsZero();
        });
}

Recusa ConfereDocumentoLivre(const Memoria& memoria)
{
    if (Recusa recusa = ConfereNadaAberto(memoria)) {
        return recusa;
    }
    return ConfereForaDeIntervencao(memoria);
}

} // namespace

Recusa Registro::PodeLeituraX(EMidia, RtcAbsoluteTime) const
{
    return ConfereNadaAberto(m_memoria);
}

void Registro::LeituraX(EMidia midia, RtcAbsoluteTime)
{
    if (midia != ARQUIVO) {
        AvancaContador(m_memoria, COUNTER_COO);
    }
}

Recusa Registro::PodeLeituraMF(RtcAbsoluteTime) const
{
    return ConfereNadaAberto(m_memoria);
}

void Registro::LeituraMF(RtcAbsoluteTime)
{
    AvancaContador(m_memoria, COUNTER_COO);
}

Recusa Registro::PodeAbreCCD(int meio, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereDocumentoLivre(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereUltimoCupom(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereMeio(m_memoria, meio)) {
        return recusa;
    }
    if (m_memoria.meios[static_cast<std::size_t>(meio) - 1].vinculacao != COM_CCD) {
        return "Meio de Pagamento " + std::to_string(meio) +
               " is not tied to a Comprovante de Crédito ou Débito";
    }
    const auto& pagamentos = m_memoria.cupom.pagamentos;
    if (PrimeiroSemCCD(pagamentos, meio - 1) == pagamentos.end()) {
        return "the receipt COO " + std::to_string(m_memoria.cupom.coo) +
               " has no payment in Meio de Pagamento " + std::to_string(meio) +
               " without its Comprovante de Crédito ou Débito";
    }
    return std::nullopt;
}

void Registro::AbreCCD(int meio, RtcAbsoluteTime)
{
    auto& pagamentos = m_memoria.cupom.pagamentos;
    const int ordem = UltimoCCD(pagamentos)->ordemCCD + 1;
    PrimeiroSemCCD(pagamentos, meio - 1)->ordemCCD = ordem;
    m_memoria.documento = EDocumentoAberto::CCD;
    AvancaContador(m_memoria, COUNTER_COO);
    AvancaContador(m_memoria, COUNTER_GNF);
    AvancaContador(m_memoria, COUNTER_CDC);
}

Recusa Registro::PodeAbreEstornoCCD(RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereDocumentoLivre(m_memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereUltimoCupom(m_memoria)) {
        return recusa;
    }
    if (UltimoCCD(m_memoria.cupom.pagamentos)->ordemCCD == 0) {
        return "the receipt COO " + std::to_string(m_memoria.cupom.coo) +
               " has no Comprovante de Crédito ou Débito";
    }
    return std::nullopt;
}

void Registro::AbreEstornoCCD(RtcAbsoluteTime)
{
    UltimoCCD(m_memoria.cupom.pagamentos)->ordemCCD = 0;
    m_memoria.documento = EDocumentoAberto::ESTORNO_CCD;
    AvancaContador(m_memoria, COUNTER_COO);
    AvancaContador(m_memoria, COUNTER_GNF);
}

Recusa Registro::PodeAbreGerencial(RtcAbsoluteTime) const
{
    return ConfereDocumentoLivre(m_memoria);
}

void Registro::AbreGerencial(RtcAbsoluteTime)
{
    m_memoria.documento = EDocumentoAberto::GERENCIAL;
    AvancaContador(m_memoria, COUNTER_COO);
    AvancaContador(m_memoria, COUNTER_GNF);
    AvancaContador(m_memoria, COUNTER_GRG);
}

Recusa Registro::PodeFechaCCDGerencial(RtcAbsoluteTime) const
{
    if (m_memoria.documento == EDocumentoAberto::NENHUM) {
        return "no Comprovante de Crédito ou Débito and no Relatório Gerencial is open";
    }
    return std::nullopt;
}

void Registro::FechaCCDGerencial(RtcAbsoluteTime)
{
    m_memoria.documento = EDocumentoAberto::NENHUM;
}

Recusa Registro::PodeReimprimeMFD(int cooInicial, int cooFinal, RtcAbsoluteTime) const
{
    if (Recusa recusa = ConfereNadaAberto(m_memoria)) {
        return recusa;
    }
    if (cooInicial < 1 || cooInicial > cooFinal) {
        return "a reprint goes from a first to a last COO, both above zero";
    }
    const int ultimo = m_memoria.contadores[COUNTER_COO];
    if (cooFinal > ultimo) {
        return "the last document is COO " + std::to_string(ultimo) + ": there is no " +
               std::to_string(cooFinal);
    }
    return std::nullopt;
}

void Registro::ReimprimeMFD(int, int, RtcAbsoluteTime)
{
    AvancaContador(m_memoria, COUNTER_COO);
}

void Registro::ConcluiReimpressao()
{
    AvancaContador(m_memoria, COUNTER_CFD);
}

} // namespace bancada
