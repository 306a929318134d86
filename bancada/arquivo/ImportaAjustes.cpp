// Discounts and surcharges of a receipt, told by its records.
#include "bancada/Messages.h"
#include "bancada/arquivo/ImportaCupom.h"
#include "bancada/arquivo/Percentual.h"

namespace bancada::arquivo
{
namespace
{

void WriteAjuste(Importador& importing, const char* command, const char* operacao,
                 std::int64_t cents, std::int64_t item)
{
    TapeLine line = importing.tape.Then(command);
    line.Text("operacao", operacao).Text("tipo", "valor").Money("valor", cents);
    if (item != 0) {
        line.Number("item", item);
    }
}

void WriteAcrescimoSubtotal(Importador& importing, const CupomLido& cupom, std::int64_t base,
                            std::int64_t valor, bool percentual)
{
    const std::int64_t hundredths = percentual ? PercentualOf(base, valor) : 0;
    if (hundredths == 0) {
        if (percentual) {
            importing.naoDito.AddField(std::string(cupom.record.Type()), "tipo_acrescimo",
                                       Tr("no percentage of two decimals comes to the surcharge"));
        }
        WriteAjuste(importing, "efetua_desc_acres_subtotal", "acrescimo", valor, 0);
        return;
    }
    importing.tape.Then("efetua_desc_acres_subtotal")
        .Text("operacao", "acrescimo")
        .Text("tipo", "percentual")
        .Decimal("valor", hundredths, 2);
}

} // namespace

void WriteAjustesItem(Importador& importing, const ItemLido& item, std::int64_t numero)
{
    const std::int64_t cancelado = item.record.Integer("acrescimo_cancelado");
    if (cancelado != 0) {
        WriteAjuste(importing, "efetua_desc_acres_item", "acrescimo", cancelado, numero);
        importing.tape.Then("cancela_desc_acres_item")
            .Text("operacao", "acrescimo")
            .Number("item", numero);
    }
    if (item.acrescimo != 0) {
        WriteAjuste(importing, "efetua_desc_acres_item", "acrescimo", item.acrescimo, numero);
    }
    if (item.desconto != 0) {
        WriteAjuste(importing, "efetua_desc_acres_item", "desconto", item.desconto, numero);
    }
    if (item.cancelado) {
        importing.tape.Then("cancela_item").Number("item", numero);
    }
}

void WriteAjustesSubtotal(Importador& importing, const CupomLido& cupom)
{
    std::int64_t base = 0;
    for (const ItemLido& item : cupom.itens) {
        base += item.cancelado ? 0 : item.bruto + item.acrescimo - item.desconto;
    }
    const bool percentual = cupom.record.Text("tipo_acrescimo") == "P";
    if (cupom.acrescimoCancelado != 0) {
        WriteAcrescimoSubtotal(importing, cupom, base, cupom.acrescimoCancelado,
                               percentual && cupom.acrescimo == 0);
        importing.tape.Then("cancela_desc_acres_subtotal").Text("operacao", "acrescimo");
    }
    if (cupom.desconto != 0 && cupom.acrescimo != 0) {
        importing.naoDito.AddField(std::string(cupom.record.Type()), "acrescimo",
                                   Tr("the register has one adjustment of a subtotal at a time"));
    }
    if (cupom.desconto != 0) {
        WriteAjuste(importing, "efetua_desc_acres_subtotal", "desconto", cupom.desconto, 0);
    } else if (cupom.acrescimo != 0) {
        WriteAcrescimoSubtotal(importing, cupom, base, cupom.acrescimo, percentual);
    }
    if (cupom.record.Text("tipo_desconto") == "P") {
        importing.naoDito.AddField(std::string(cupom.record.Type()), "tipo_desconto",
                                   Tr("a percentage of discount is logged as V"));
    }
}

} // namespace bancada::arquivo
