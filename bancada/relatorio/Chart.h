// Plots as inline SVG. Colours and text sizes come from the page's style classes; every text of the
// database is escaped.
#pragma once

#include <string>
#include <vector>

#include "bancada/relatorio/Vendas.h"

namespace bancada::relatorio
{

// Each twice, for a wide and for a narrow window; the style shows one of them.

// 24 columns, one an hour of the day.
std::string ChartByHora(const std::vector<VendaHora>& horas);

// One bar a payment means, the largest first.
std::string ChartByMeio(std::vector<VendaMeio> meios);

// The name of a payment means, or its number where it has none.
std::string NameOrNumber(const VendaMeio& meio);

} // namespace bancada::relatorio
