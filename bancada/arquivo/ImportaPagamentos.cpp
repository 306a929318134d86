// Payments of a receipt and their reversals, told by its records.
#include "bancada/arquivo/Estornos.h"
#include "bancada/arquivo/ImportaCupom.h"

namespace bancada::arquivo
{
namespace
{

PagamentosLidos ReadPagamentos(Importador& importing, const CupomLido& cupom)
{
    const Programacao& programacao = importing.programacao;
    std::vector<PagamentoLido> pagamentos;
    PagamentosLidos asTold;
    for (const Record& record : cupom.pagamentos) {
        PagamentoLido pagamento;
        pagamento.meio = programacao.Meio(record.Text("meio"));
        pagamento.valor = record.Integer("valor");
        if (record.Text("estornado") != "N") {
            pagamento.valorEstornado = record.Integer("valor_estornado");
        }
        pagamento.daTroco = pagamento.meio != 0 &&
                            !programacao.vinculado[static_cast<std::size_t>(pagamento.meio) - 1];
        pagamentos.push_back(pagamento);
        asTold.valores.push_back(pagamento.valor);
    }
    const auto found = FindEstornos(pagamentos, cupom.Due(), cupom.WasClosed(), cupom.cancelado);
    if (!found && !pagamentos.empty()) {
        importing.naoDito.AddField("E21", "valor, estornado, valor_estornado",
                                   "not what payments and reversals of the receipt come to");
    }
    return found.value_or(asTold);
}

void WriteEstorno(Importador& importing, const EstornoLido& estorno)
{
    importing.tape.Then("estorna_meio_pagamento")
        .Number("origem", estorno.origem)
        .Number("destino", estorno.destino)
        .Money("valor", estorno.valor);
}

} // namespace

void WritePagamentos(Importador& importing, const CupomLido& cupom)
{
    const PagamentosLidos pagamentos = ReadPagamentos(importing, cupom);
    for (std::size_t i = 0; i < pagamentos.valores.size(); ++i) {
        const std::int64_t meio = importing.programacao.Meio(cupom.pagamentos[i].Text("meio"));
        if (meio == 0) {
            importing.Note("E21", "payments in a means without a name");
            continue;
        }
        importing.tape.Then("efetua_pagamento")
            .Number("meio", meio)
            .Money("valor", pagamentos.valores[i]);
        importing.meiosDoCupom.push_back(meio);
    }
    // A reversal of an issued receipt has a number of its own.
    const std::size_t later = cupom.cancelado ? 1 : 0;
    for (const EstornoLido& estorno : pagamentos.estornos) {
        if (cupom.WasClosed() && importing.pendentes.size() + later < importing.numerosLivres) {
            importing.pendentes.push_back({SemRegistro::Kind::ESTORNO_PAGAMENTO, estorno.origem,
                                           estorno.destino, estorno.valor});
        } else {
            WriteEstorno(importing, estorno);
            importing.meiosDoCupom.push_back(estorno.destino);
        }
    }
}

} // namespace bancada::arquivo
