// What E14 and E19 have alike: a receipt's totals and its buyer.
#pragma once

#include "bancada/arquivo/Exportador.h"

namespace bancada::arquivo
{

// What the field `ordem` of a receipt holds: D or A for a discount or a surcharge; of both, what
// the facts say.
std::string OrdemOf(Exportador& exporting, const char* type, std::int64_t coo,
                    const leitura::Amount& desconto, const leitura::Amount& acrescimo);

// From the opening's date to the end; `total` is the row's.
template <typename Row>
void WriteTotais(Exportador& exporting, const char* type, const Row& row,
                 const leitura::Amount& total)
{
    RecordWriter& writer = exporting.writer;
    writer.D("data_abertura", row.dataHoraEmissao);
    writer.Amount("subtotal", row.valorSubtotal);
    writer.Amount("desconto", row.valorDesconto);
    writer.Text("tipo_desconto", row.tipoDesconto);
    writer.Amount("acrescimo", row.valorAcrescimo);
    writer.Text("tipo_acrescimo", row.tipoAcrescimo);
    writer.Amount("total", total);
    writer.Flag("cancelado", row.cancelado);
    writer.Amount("acrescimo_cancelado", row.valorCancAcrescimo);
    writer.X("ordem",
             OrdemOf(exporting, type, row.coo.Value(), row.valorDesconto, row.valorAcrescimo));
    writer.Text("nome", row.nomeConsumidor);
    writer.Digits("cpf_cnpj", row.cpfCnpjConsumidor);
}

} // namespace bancada::arquivo
