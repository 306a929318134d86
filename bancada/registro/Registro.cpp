#include "bancada/registro/Registro.h"

#include <utility>

namespace bancada
{

Registro::Registro(Memoria initial) : m_memoria(std::move(initial)) {}

void Registro::SetRatearSubtotal(bool ratear)
{
    m_memoria.ratearSubtotal = ratear;
}

void Registro::SetAplicativo(const std::string& identificacao)
{
    m_memoria.aplicativo = identificacao;
}

void Registro::SetVersaoSB(const std::string& versao)
{
    m_memoria.ecf.versaoSB = versao;
}

} // namespace bancada
