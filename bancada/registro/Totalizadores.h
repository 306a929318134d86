// Where the totalizers of a tax base lie.
#pragma once

#include <string_view>

namespace bancada
{

// A totalizer: the tax base and the position within it.
struct TotalizadorPlace {
    int baseImposto = 0;
    int posicao = -1; // -1: there is none

    bool Exists() const { return posicao >= 0; }
};

// The totalizer of a tax code and a number from 1: "T" and "S" are the rates, "F", "I", "N" and
// "FS", "IS", "NS" the special ones (1 to 3).
TotalizadorPlace FindTotalizador(std::string_view tributacao, int numero);

// Whether the code is one of the special ones.
bool IsTotalizadorEspecial(std::string_view codigo);

} // namespace bancada
