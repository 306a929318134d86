// The commands that each source of this folder adds to the catalogue. Catalogo.cpp asks them all.
#pragma once

#include "bancada/comandos/ItemDe.h"

#include <vector>

namespace bancada
{

std::vector<ItemCatalogo> ComandosDeAbertura();
std::vector<ItemCatalogo> ComandosDeVenda();
std::vector<ItemCatalogo> ComandosDeAjusteDeItem();
std::vector<ItemCatalogo> ComandosDeAjusteDeSubtotal();
std::vector<ItemCatalogo> ComandosDePagamento();
std::vector<ItemCatalogo> ComandosDeFechamento();
std::vector<ItemCatalogo> ComandosDeCancelamento();
std::vector<ItemCatalogo> ComandosNaoFiscais();
std::vector<ItemCatalogo> ComandosDeLeitura();
std::vector<ItemCatalogo> ComandosDeReducaoZ();
std::vector<ItemCatalogo> ComandosDeComprovante();
std::vector<ItemCatalogo> ComandosDeIntervencao();
std::vector<ItemCatalogo> ComandosDeFitaDetalhe();
std::vector<ItemCatalogo> ComandosDeTotalizadores();
std::vector<ItemCatalogo> ComandosDeProprietario();
std::vector<ItemCatalogo> ComandosDeIdentidade();

} // namespace bancada
