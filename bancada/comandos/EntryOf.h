// How a source of this folder states one of its commands for the catalogue.
#pragma once

#include "bancada/comandos/Catalogue.h"

#include <memory>

namespace bancada
{

template <class Comando>
std::unique_ptr<ComandoBancada> Make(Registro& registro)
{
    return std::make_unique<Comando>(registro);
}

// The catalogue's entry of `Comando`; the code is the one that its firmware class carries.
template <class Comando>
CatalogueEntry EntryOf(const char* name, const char* commandClass, const char* summary,
                       const char* tables, const char* documentType)
{
    return {name,          typename Comando::Firmware().m_eCmdType,
            commandClass,  summary,
            tables,        documentType,
            &Make<Comando>};
}

} // namespace bancada
