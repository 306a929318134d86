// The commands that each source of this folder adds to the catalogue. Catalogue.cpp asks them all.
#pragma once

#include "bancada/comandos/EntryOf.h"

#include <vector>

namespace bancada
{

std::vector<CatalogueEntry> AberturaCupomComandos();
std::vector<CatalogueEntry> VendaItemComandos();
std::vector<CatalogueEntry> AjusteItemComandos();
std::vector<CatalogueEntry> AjusteSubtotalComandos();
std::vector<CatalogueEntry> PagamentoComandos();
std::vector<CatalogueEntry> FechamentoComandos();
std::vector<CatalogueEntry> CancelamentoComandos();
std::vector<CatalogueEntry> NaoFiscalComandos();
std::vector<CatalogueEntry> LeituraComandos();
std::vector<CatalogueEntry> ReducaoZComandos();
std::vector<CatalogueEntry> ComprovanteComandos();
std::vector<CatalogueEntry> IntervencaoComandos();
std::vector<CatalogueEntry> FitaDetalheComandos();
std::vector<CatalogueEntry> TotalizadoresComandos();
std::vector<CatalogueEntry> ProprietarioComandos();
std::vector<CatalogueEntry> IdentidadeComandos();

} // namespace bancada
