#include "bancada/registro/Totalizadores.h"

#include "bancada/registro/Memoria.h"

namespace bancada
{

namespace
{

struct Faixa {
    std::string_view codigo;
    int baseImposto;
    int primeira;   // position of number 1
    int quantidade; // numbers from 1 to this
};

constexpr int POR_CODIGO = 3; // special totalizers of a code
constexpr int ICMS = BC_IND_FISCAL_BI_IND_ICMS;
constexpr int ISSQN = BC_IND_FISCAL_BI_IND_ISSQN;

constexpr Faixa FAIXAS[] = {
    {"T", ICMS, 0, MAX_ALIQUOTAS},
    {"F", ICMS, MAX_ALIQUOTAS, POR_CODIGO},
    {"I", ICMS, MAX_ALIQUOTAS + POR_CODIGO, POR_CODIGO},
    {"N", ICMS, MAX_ALIQUOTAS + 2 * POR_CODIGO, POR_CODIGO},
    {"S", ISSQN, 0, MAX_ALIQUOTAS},
    {"FS", ISSQN, MAX_ALIQUOTAS, POR_CODIGO},
    {"IS", ISSQN, MAX_ALIQUOTAS + POR_CODIGO, POR_CODIGO},
    {"NS", ISSQN, MAX_ALIQUOTAS + 2 * POR_CODIGO, POR_CODIGO},
};
static_assert(3 * POR_CODIGO == MAX_ESPECIAIS, "three codes of special totalizers a tax base");

} // namespace

LugarDoTotalizador LocalizaTotalizador(std::string_view tributacao, int numero)
{
    for (const Faixa& faixa : FAIXAS) {
        if (faixa.codigo == tributacao && numero >= 1 && numero <= faixa.quantidade) {
            return {faixa.baseImposto, faixa.primeira + numero - 1};
        }
    }
    return {};
}

bool TotalizadorEspecial(std::string_view codigo)
{
    const LugarDoTotalizador lugar = LocalizaTotalizador(codigo, 1);
    return lugar.posicao >= MAX_ALIQUOTAS;
}

} // namespace bancada
