// What the grocer sells.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bancada
{

struct Mercadoria {
    // 12 digits of a bar code, to which CodigoDeBarras adds the check digit; or a short code of the
    // shop's own, for what is weighed.
    const char* codigo;
    const char* descricao;
    const char* unidade;
    std::int64_t preco; // of a unit, in thousandths
    bool milesimos;     // the price has three decimals
    bool pesada;        // the quantity is a weight in grams
    const char* tributacao;
    int indice; // number of the rate or totalizer
    int peso;   // how often it is bought
};

const std::vector<Mercadoria>& Mercadorias();

// The 13 digits of the bar code, check digit included; a short code as it is.
std::string CodigoDeBarras(const std::string& codigo);

} // namespace bancada
