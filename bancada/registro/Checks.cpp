#include "bancada/registro/Checks.h"

#include "bancada/CheckDigits.h"
#include "bancada/Messages.h"
#include "bancada/registro/CurrentCupom.h"
#include "bancada/registro/Jornada.h"
#include "bancada/registro/TextForms.h"

namespace bancada
{

Financial MaxLancamento()
{
    return Financial::FromCents(MAX_LANCAMENTO_CENTS);
}

Financial MaxPagamento()
{
    return Financial::FromCents(MAX_PAGAMENTO_CENTS);
}

Refusal CheckValor(const char* what, const Financial& valor, const Financial& maximum)
{
    if (valor.IsNegative() || valor.IsZero()) {
        return Tr("%1 must be above zero", {Tr(what)});
    }
    if (valor.Rounded(2, Rounding::TOWARD_ZERO) != valor) {
        return Tr("%1 has more than two decimals", {Tr(what)});
    }
    if (valor > maximum) {
        return Tr("%1 is more than the register takes (%2)", {Tr(what), ValorToText(maximum)});
    }
    return std::nullopt;
}

Refusal CheckConsumidor(const Consumidor& consumidor)
{
    const std::string& numero = consumidor.cpfCnpj;
    if (numero.empty()) {
        return std::nullopt;
    }
    if (numero.size() == CPF_DIGITS) {
        return IsCPF(numero) ? std::nullopt : Refusal(Tr("the CPF %1 is wrong", {numero}));
    }
    if (numero.size() == CNPJ_DIGITS) {
        return IsCNPJ(numero) ? std::nullopt : Refusal(Tr("the CNPJ %1 is wrong", {numero}));
    }
    return Tr("a CPF has 11 digits and a CNPJ 14, without punctuation: %1", {numero});
}

bool IsCupomOpen(const Memoria& memoria)
{
    return memoria.cupom.situacao == ESituacaoCupom::EM_ITENS ||
           memoria.cupom.situacao == ESituacaoCupom::EM_PAGAMENTO;
}

Refusal CheckNothingOpen(const Memoria& memoria)
{
    if (IsCupomOpen(memoria)) {
        return Tr(memoria.cupom.tipo == CUPOM_FISCAL
                      ? TrLater("a Cupom Fiscal is open: COO %1")
                      : TrLater("a Comprovante Não Fiscal is open: COO %1"),
                  {std::to_string(memoria.cupom.coo)});
    }
    switch (memoria.documento) {
    case EDocumentoAberto::CCD:
        return Tr("a Comprovante de Crédito ou Débito is open");
    case EDocumentoAberto::ESTORNO_CCD:
        return Tr("a reversal of a Comprovante de Crédito ou Débito is open");
    case EDocumentoAberto::GERENCIAL:
        return Tr("a Relatório Gerencial is open");
    case EDocumentoAberto::NENHUM:
        break;
    }
    return std::nullopt;
}

Refusal CheckNoIntervencao(const Memoria& memoria)
{
    switch (memoria.modo) {
    case EModoIntervencao::MIL:
        return Tr("the register is in intervention mode L: leave it first");
    case EModoIntervencao::MIT:
        return Tr("the register is in intervention mode T: leave it first");
    case EModoIntervencao::NENHUM:
        break;
    }
    return std::nullopt;
}

Refusal CheckMovimento(const Memoria& memoria, RtcAbsoluteTime em)
{
    if (Refusal refusal = CheckNothingOpen(memoria)) {
        return refusal;
    }
    if (Refusal refusal = CheckNoIntervencao(memoria)) {
        return refusal;
    }
    return CheckJornada(memoria, em);
}

Refusal CheckCupomOpen(const Memoria& memoria)
{
    if (!IsCupomOpen(memoria)) {
        return Tr("no receipt is open");
    }
    return std::nullopt;
}

Refusal CheckCupomOpen(const Memoria& memoria, FD_TIPO_CUPOM tipo)
{
    if (IsCupomOpen(memoria) && memoria.cupom.tipo == tipo) {
        return std::nullopt;
    }
    return tipo == CUPOM_FISCAL ? Tr("no Cupom Fiscal is open")
                                : Tr("no Comprovante Não Fiscal is open");
}

Refusal CheckItensOpen(const Memoria& memoria)
{
    if (memoria.cupom.situacao == ESituacaoCupom::EM_PAGAMENTO) {
        return Tr("the receipt is being paid: its items and its subtotal stand");
    }
    if (memoria.cupom.ajusteAplicado) {
        return memoria.cupom.ajusteOperacao == DESCONTO
                   ? Tr("the subtotal carries a discount: cancel it before anything else changes")
                   : Tr("the subtotal carries a surcharge: cancel it before anything else changes");
    }
    return std::nullopt;
}

Refusal CheckRoomForItem(const CurrentCupom& cupom)
{
    if (cupom.itens.size() >= MAX_ITENS_CUPOM) {
        return Tr("the receipt is full: it has %1 items", {std::to_string(MAX_ITENS_CUPOM)});
    }
    return std::nullopt;
}

Refusal CheckItem(const CurrentCupom& cupom, int numero)
{
    if (numero < 1 || static_cast<std::size_t>(numero) > cupom.itens.size()) {
        return Tr("the receipt has no item %1", {std::to_string(numero)});
    }
    if (cupom.itens[static_cast<std::size_t>(numero) - 1].cancelado) {
        return Tr("item %1 is cancelled", {std::to_string(numero)});
    }
    return std::nullopt;
}

Refusal CheckPago(const CurrentCupom& cupom)
{
    if (cupom.itensVivos == 0) {
        return Tr("the receipt has no item: cancel it instead");
    }
    const Financial due = CupomTotal(cupom) - cupom.pago;
    if (due > Financial()) {
        return Tr("%1 is still to be paid", {ValorToText(due)});
    }
    return std::nullopt;
}

Refusal CheckLastCupom(const Memoria& memoria)
{
    const CurrentCupom& cupom = memoria.cupom;
    if (cupom.situacao == ESituacaoCupom::NENHUM) {
        return Tr("no receipt was issued");
    }
    if (cupom.situacao == ESituacaoCupom::CANCELADO) {
        return Tr("the last receipt, COO %1, is cancelled", {std::to_string(cupom.coo)});
    }
    if (cupom.movimentoDeCaixa) {
        return Tr("the last receipt, COO %1, is a Sangria or a Fundo de Troco",
                  {std::to_string(cupom.coo)});
    }
    if (!memoria.jornada.aberta) {
        return Tr("the day of the last receipt, COO %1, was closed by its Redução Z",
                  {std::to_string(cupom.coo)});
    }
    return std::nullopt;
}

bool GivesTroco(const Memoria& memoria, int meio)
{
    return memoria.meios[static_cast<std::size_t>(meio)].vinculacao != COM_CCD;
}

Refusal CheckMeio(const Memoria& memoria, int numero)
{
    if (numero < 1 || numero > MAX_MEIOS_PAGAMENTO ||
        memoria.meios[static_cast<std::size_t>(numero) - 1].descricao.empty()) {
        return Tr("Meio de Pagamento %1 is not programmed", {std::to_string(numero)});
    }
    return std::nullopt;
}

} // namespace bancada
