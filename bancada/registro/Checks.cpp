#include "bancada/registro/Checks.h"

#include "bancada/CheckDigits.h"
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
    const std::string name(what);
    if (valor.IsNegative() || valor.IsZero()) {
        return name + " must be above zero";
    }
    if (valor.Rounded(2, Rounding::TOWARD_ZERO) != valor) {
        return name + " has more than two decimals";
    }
    if (valor > maximum) {
        return name + " is more than the register takes (" + ValorToText(maximum) + ")";
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
        return IsCPF(numero) ? std::nullopt : Refusal("the CPF " + numero + " is wrong");
    }
    if (numero.size() == CNPJ_DIGITS) {
        return IsCNPJ(numero) ? std::nullopt : Refusal("the CNPJ " + numero + " is wrong");
    }
    return "a CPF has 11 digits and a CNPJ 14, without punctuation: " + numero;
}

bool IsCupomOpen(const Memoria& memoria)
{
    return memoria.cupom.situacao == ESituacaoCupom::EM_ITENS ||
           memoria.cupom.situacao == ESituacaoCupom::EM_PAGAMENTO;
}

Refusal CheckNothingOpen(const Memoria& memoria)
{
    if (IsCupomOpen(memoria)) {
        return std::string(memoria.cupom.tipo == CUPOM_FISCAL ? "a Cupom Fiscal"
                                                              : "a Comprovante Não Fiscal") +
               " is open: COO " + std::to_string(memoria.cupom.coo);
    }
    switch (memoria.documento) {
    case EDocumentoAberto::CCD:
        return "a Comprovante de Crédito ou Débito is open";
    case EDocumentoAberto::ESTORNO_CCD:
        return "a reversal of a Comprovante de Crédito ou Débito is open";
    case EDocumentoAberto::GERENCIAL:
        return "a Relatório Gerencial is open";
    case EDocumentoAberto::NENHUM:
        break;
    }
    return std::nullopt;
}

Refusal CheckNoIntervencao(const Memoria& memoria)
{
    switch (memoria.modo) {
    case EModoIntervencao::MIL:
        return "the register is in intervention mode L: leave it first";
    case EModoIntervencao::MIT:
        return "the register is in intervention mode T: leave it first";
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
        return "no receipt is open";
    }
    return std::nullopt;
}

Refusal CheckCupomOpen(const Memoria& memoria, FD_TIPO_CUPOM tipo)
{
    if (IsCupomOpen(memoria) && memoria.cupom.tipo == tipo) {
        return std::nullopt;
    }
    return tipo == CUPOM_FISCAL ? "no Cupom Fiscal is open" : "no Comprovante Não Fiscal is open";
}

Refusal CheckItensOpen(const Memoria& memoria)
{
    if (memoria.cupom.situacao == ESituacaoCupom::EM_PAGAMENTO) {
        return "the receipt is being paid: its items and its subtotal stand";
    }
    if (memoria.cupom.ajusteAplicado) {
        return std::string("the subtotal carries ") +
               (memoria.cupom.ajusteOperacao == DESCONTO ? "a discount" : "a surcharge") +
               ": cancel it before anything else changes";
    }
    return std::nullopt;
}

Refusal CheckRoomForItem(const CurrentCupom& cupom)
{
    if (cupom.itens.size() >= MAX_ITENS_CUPOM) {
        return "the receipt is full: it has " + std::to_string(MAX_ITENS_CUPOM) + " items";
    }
    return std::nullopt;
}

Refusal CheckItem(const CurrentCupom& cupom, int numero)
{
    if (numero < 1 || static_cast<std::size_t>(numero) > cupom.itens.size()) {
        return "the receipt has no item " + std::to_string(numero);
    }
    if (cupom.itens[static_cast<std::size_t>(numero) - 1].cancelado) {
        return "item " + std::to_string(numero) + " is cancelled";
    }
    return std::nullopt;
}

Refusal CheckPago(const CurrentCupom& cupom)
{
    if (cupom.itensVivos == 0) {
        return "the receipt has no item: cancel it instead";
    }
    const Financial due = CupomTotal(cupom) - cupom.pago;
    if (due > Financial()) {
        return ValorToText(due) + " is still to be paid";
    }
    return std::nullopt;
}

Refusal CheckLastCupom(const Memoria& memoria)
{
    const CurrentCupom& cupom = memoria.cupom;
    if (cupom.situacao == ESituacaoCupom::NENHUM) {
        return "no receipt was issued";
    }
    if (cupom.situacao == ESituacaoCupom::CANCELADO) {
        return "the last receipt, COO " + std::to_string(cupom.coo) + ", is cancelled";
    }
    if (cupom.movimentoDeCaixa) {
        return "the last receipt, COO " + std::to_string(cupom.coo) +
               ", is a Sangria or a Fundo de Troco";
    }
    if (!memoria.jornada.aberta) {
        return "the day of the last receipt, COO " + std::to_string(cupom.coo) +
               ", was closed by its Redução Z";
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
        return "Meio de Pagamento " + std::to_string(numero) + " is not programmed";
    }
    return std::nullopt;
}

} // namespace bancada
