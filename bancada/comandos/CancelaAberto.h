// The directive after which a tape goes on, whatever the lines before it have left open.
#pragma once

#include "bancada/Messages.h"
#include "bancada/comandos/Catalogue.h"

namespace bancada
{

inline constexpr char CANCELA_ABERTO[] = "cancela_aberto";
inline constexpr const char* CANCELA_ABERTO_SUMMARY = TrLater(
    "cancels the receipt that is open, by `cancela_cupom_em_emissao`, or closes the open voucher or "
    "report, by `fecha_ccd_gerencial`; where nothing is open it does nothing and takes no time");

// The command by which it does so; null where nothing is open.
[[nodiscard]] const CatalogueEntry* FindCancelamento(const Registro& registro);

} // namespace bancada
