#include "bancada/registro/Regras.h"

#include "bancada/registro/CupomAtual.h"
#include "bancada/registro/DigitosVerificadores.h"
#include "bancada/registro/Jornada.h"
#include "bancada/registro/Textos.h"

namespace bancada
{

Financial MaximoDeUmLancamento()
{
    return Financial::FromCents(99'999'999'999);
}

Financial MaximoDeUmPagamento()
{
    return Financial::FromCents(99'999'999'999'999);
}

Recusa ConfereValor(const char* oQue, const Financial& valor, const Financial& maximo)
{
    const std::string nome(oQue);
    if (valor.IsNegative() || valor.IsZero()) {
        return nome + " must be above zero";
    }
    if (valor.Rounded(2, Rounding::TOWARD_ZERO) != valor) {
        return nome + " has more than two decimals";
    }
    if (valor > maximo) {
        return nome + " is more than the register takes (" + TextoValor(maximo) + ")";
    }
    return std::nullopt;
}

Recusa ConfereConsumidor(const Consumidor& consumidor)
{
    const std::string& numero = consumidor.cpfCnpj;
    if (numero.empty()) {
        return std::nullopt;
    }
    if (numero.size() == TAMANHO_CPF) {
        return CPFCorreto(numero) ? std::nullopt : Recusa("the CPF " + numero + " is wrong");
    }
    if (numero.size() == TAMANHO_CNPJ) {
        return CNPJCorreto(numero) ? std::nullopt : Recusa("the CNPJ " + numero + " is wrong");
    }
    return "a CPF has 11 digits and a CNPJ 14, without punctuation: " + numero;
}

bool CupomAberto(const Memoria& memoria)
{
    return memoria.cupom.situacao == ESituacaoCupom::EM_ITENS ||
           memoria.cupom.situacao == ESituacaoCupom::EM_PAGAMENTO;
}

Recusa ConfereNadaAberto(const Memoria& memoria)
{
    if (CupomAberto(memoria)) {
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

Recusa ConfereForaDeIntervencao(const Memoria& memoria)
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

Recusa ConferePodeMovimentar(const Memoria& memoria, RtcAbsoluteTime em)
{
    if (Recusa recusa = ConfereNadaAberto(memoria)) {
        return recusa;
    }
    if (Recusa recusa = ConfereForaDeIntervencao(memoria)) {
        return recusa;
    }
    return PodeMovimentarJornada(memoria, em);
}

Recusa ConfereCupomAberto(const Memoria& memoria)
{
    if (!CupomAberto(memoria)) {
        return "no receipt is open";
    }
    return std::nullopt;
}

Recusa ConfereCupomAberto(const Memoria& memoria, FD_TIPO_CUPOM tipo)
{
    if (CupomAberto(memoria) && memoria.cupom.tipo == tipo) {
        return std::nullopt;
    }
    return tipo == CUPOM_FISCAL ? "no Cupom Fiscal is open" : "no Comprovante Não Fiscal is open";
}

Recusa ConfereItensAbertos(const Memoria& memoria)
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

Recusa ConfereLugarParaItem(const CupomAtual& cupom)
{
    if (cupom.itens.size() >= MAX_ITENS_CUPOM) {
        return "the receipt is full: it has " + std::to_string(MAX_ITENS_CUPOM) + " items";
    }
    return std::nullopt;
}

Recusa ConfereItem(const CupomAtual& cupom, int numero)
{
    if (numero < 1 || static_cast<std::size_t>(numero) > cupom.itens.size()) {
        return "the receipt has no item " + std::to_string(numero);
    }
    if (cupom.itens[static_cast<std::size_t>(numero) - 1].cancelado) {
        return "item " + std::to_string(numero) + " is cancelled";
    }
    return std::nullopt;
}

Recusa ConferePago(const CupomAtual& cupom)
{
    if (cupom.itensVivos == 0) {
        return "the receipt has no item: cancel it instead";
    }
    const Financial falta = TotalDoCupom(cupom) - cupom.pago;
    if (falta > Financial()) {
        return TextoValor(falta) + " is still to be paid";
    }
    return std::nullopt;
}

Recusa ConfereUltimoCupom(const Memoria& memoria)
{
    const CupomAtual& cupom = memoria.cupom;
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

Recusa ConfereMeio(const Memoria& memoria, int numero)
{
    if (numero < 1 || numero > MAX_MEIOS_PAGAMENTO ||
        memoria.meios[static_cast<std::size_t>(numero) - 1].descricao.empty()) {
        return "Meio de Pagamento " + std::to_string(numero) + " is not programmed";
    }
    return std::nullopt;
}

} // namespace bancada
