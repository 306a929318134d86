#include "bancada/arquivo/ExportaTotais.h"

#include "bancada/Messages.h"

namespace bancada::arquivo
{

std::string OrdemOf(Exportador& exporting, const char* type, std::int64_t coo,
                    const leitura::Amount& desconto, const leitura::Amount& acrescimo)
{
    const bool hasDesconto = desconto.IsKnown() && !desconto.IsZero();
    const bool hasAcrescimo = acrescimo.IsKnown() && !acrescimo.IsZero();
    if (hasDesconto != hasAcrescimo) {
        return hasDesconto ? "D" : "A";
    }
    if (!hasDesconto) {
        return "";
    }
    const auto told = exporting.fatos.ordens.find(coo);
    if (told != exporting.fatos.ordens.end()) {
        return told->second;
    }
    exporting.neutros.AddField(
        type, "ordem", Tr("of a discount and a surcharge, no column tells which was first"));
    return "";
}

} // namespace bancada::arquivo
