// Payments of a receipt and their reversals, told by its records.
#include "bancada/Messages.h"
#include "bancada/arquivo/Estornos.h"
#include "bancada/arquivo/ImportaCupom.h"

namespace bancada::arquivo
{
namespace
{

PagamentosLidos ReadPagamentos(Importador& importing, const CupomLido& cupom)
{
    const Programacao& programacao = importing.programacao;
    const auto found = FindPagamentos(programacao, cupom, [&programacao](std::int64_t meio) {
        return !programacao.vinculado[static_cast<std::size_t>(meio) - 1];
    });
    if (found) {
        return *found;
    }
    if (!cupom.pagamentos.empty()) {
        importing.naoDito.AddField("E21", "valor, estornado, valor_estornado",
                                   Tr("not what payments and reversals of the receipt come to"));
    }
    PagamentosLidos asTold;
    for (const Record& record : cupom.pagamentos) {
        asTold.valores.push_back(record.Integer("valor"));
    }
    return asTold;
}

} // namespace

std::optional<PagamentosLidos> FindPagamentos(const Programacao& programacao,
                                              const CupomLido& cupom,
                                              const std::function<bool(std::int64_t)>& daTroco)
{
    std::vector<PagamentoLido> pagamentos;
    for (const Record& record : cupom.pagamentos) {
        PagamentoLido pagamento;
        pagamento.meio = programacao.Meio(record.Text("meio"));
        pagamento.valor = record.Integer("valor");
        if (record.Text("estornado") != "N") {
            pagamento.valorEstornado = record.Integer("valor_estornado");
        }
        pagamento.daTroco = pagamento.meio != 0 && daTroco(pagamento.meio);
        pagamentos.push_back(pagamento);
    }
    return FindEstornos(pagamentos, cupom.Due(), cupom.WasClosed(), cupom.cancelado);
}

void WriteEstorno(Importador& importing, const EstornoLido& estorno)
{
    importing.tape.Then("estorna_meio_pagamento")
        .Number("origem", estorno.origem)
        .Number("destino", estorno.destino)
        .Money("valor", estorno.valor);
    importing.comprovantes.Move(estorno);
}

void WritePagamentos(Importador& importing, const CupomLido& cupom)
{
    const PagamentosLidos pagamentos = ReadPagamentos(importing, cupom);
    for (std::size_t i = 0; i < pagamentos.valores.size(); ++i) {
        const std::int64_t meio = importing.programacao.Meio(cupom.pagamentos[i].Text("meio"));
        if (meio == 0) {
            importing.Note("E21", Tr("payments in a means without a name"));
            continue;
        }
        importing.tape.Then("efetua_pagamento")
            .Number("meio", meio)
            .Money("valor", pagamentos.valores[i]);
        importing.comprovantes.Pay(meio, pagamentos.valores[i]);
    }
    // A reversal of an issued receipt has a number of its own, as have what its cancellation needs:
    // that of each voucher and, of a fiscal one, its own.
    const NumerosLivres& livres = importing.livres;
    const std::size_t later =
        cupom.cancelado ? livres.comprovantes + (cupom.IsFiscal() ? 1 : 0) : 0;
    for (const EstornoLido& estorno : pagamentos.estornos) {
        if (cupom.WasClosed() && importing.pendentes.size() + later < livres.numeros) {
            importing.pendentes.push_back({SemRegistro::Kind::ESTORNO_PAGAMENTO, estorno});
        } else {
            WriteEstorno(importing, estorno);
        }
    }
}

} // namespace bancada::arquivo
