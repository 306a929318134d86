// What the grocer sells.
#pragma once

#include "bancada/gerador/Draw.h"

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
    bool thousandths;   // the price has three decimals
    bool weighed;       // the quantity is a weight in grams
    const char* tributacao;
    int indice; // number of the rate or totalizer
    int weight; // how often it is bought
};

// The same list for as long as the program runs.
const std::vector<Mercadoria>& Mercadorias();

// One of them, each as often as its weight says.
const Mercadoria& DrawMercadoria(Draw& draw);

// The 13 digits of the bar code, check digit included; a short code as it is.
std::string CodigoDeBarras(const std::string& codigo);

} // namespace bancada
