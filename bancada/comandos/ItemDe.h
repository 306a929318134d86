// How a source of this folder states one of its commands for the catalogue.
#pragma once

#include "bancada/comandos/Catalogo.h"

#include <memory>

namespace bancada
{

template <class Comando>
std::unique_ptr<ComandoBancada> Cria(Registro& registro)
{
    return std::make_unique<Comando>(registro);
}

// The catalogue's entry of `Comando`; the code is the one that its firmware class carries.
template <class Comando>
ItemCatalogo ItemDe(const char* nome, const char* classe, const char* resumo, const char* tabelas,
                    const char* documento)
{
    return {
        nome,          typename Comando::Firmware().m_eCmdType, classe, resumo, tabelas, documento,
        &Cria<Comando>};
}

} // namespace bancada
