#include "bancada/conferencia/Consumidor.h"

#include "bancada/conferencia/Dominio.h"

#include <cstddef>

namespace bancada::conferencia
{

// What follows the label, one blank aside, up to the next blank; its digits, no more than of a
// CNPJ.
std::string ConsumidorDaMensagem(std::string_view mensagem)
{
    constexpr std::string_view LABEL = "CNPJ/CPF consumidor:";
    constexpr std::size_t CNPJ = 14;
    constexpr std::size_t CPF = 11;
    const std::size_t found = mensagem.find(LABEL);
    if (found == std::string_view::npos) {
        return {};
    }
    std::size_t i = found + LABEL.size();
    i += i < mensagem.size() && mensagem[i] == ' ' ? 1 : 0;
    std::string digits;
    for (; i < mensagem.size() && mensagem[i] != ' ' && digits.size() < CNPJ; ++i) {
        if (mensagem[i] >= '0' && mensagem[i] <= '9') {
            digits += mensagem[i];
        }
    }
    return digits.size() == CPF || digits.size() == CNPJ ? digits : std::string();
}

bool IsConsumidor(std::string_view cpfCnpj)
{
    return cpfCnpj.empty() || IsCpf(cpfCnpj) || IsCnpj(cpfCnpj);
}

} // namespace bancada::conferencia
