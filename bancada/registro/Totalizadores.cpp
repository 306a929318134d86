#include "bancada/registro/Totalizadores.h"

#include "FiscalData/FiscalDataTypes.h"
#include "bancada/registro/Limits.h"

namespace bancada
{

namespace
{

struct Range {
    std::string_view codigo;
    int baseImposto;
    int first; // position of number 1
    int count; // numbers from 1 to this
};

constexpr int ICMS = BC_IND_FISCAL_BI_IND_ICMS;
constexpr int ISSQN = BC_IND_FISCAL_BI_IND_ISSQN;

constexpr Range RANGES[] = {
    {"T", ICMS, 0, MAX_ALIQUOTAS},
    {"F", ICMS, MAX_ALIQUOTAS, MAX_ESPECIAIS_POR_CODIGO},
    {"I", ICMS, MAX_ALIQUOTAS + MAX_ESPECIAIS_POR_CODIGO, MAX_ESPECIAIS_POR_CODIGO},
    {"N", ICMS, MAX_ALIQUOTAS + 2 * MAX_ESPECIAIS_POR_CODIGO, MAX_ESPECIAIS_POR_CODIGO},
    {"S", ISSQN, 0, MAX_ALIQUOTAS},
    {"FS", ISSQN, MAX_ALIQUOTAS, MAX_ESPECIAIS_POR_CODIGO},
    {"IS", ISSQN, MAX_ALIQUOTAS + MAX_ESPECIAIS_POR_CODIGO, MAX_ESPECIAIS_POR_CODIGO},
    {"NS", ISSQN, MAX_ALIQUOTAS + 2 * MAX_ESPECIAIS_POR_CODIGO, MAX_ESPECIAIS_POR_CODIGO},
};

} // namespace

TotalizadorPlace FindTotalizador(std::string_view tributacao, int numero)
{
    for (const Range& range : RANGES) {
        if (range.codigo == tributacao && numero >= 1 && numero <= range.count) {
            return {range.baseImposto, range.first + numero - 1};
        }
    }
    return {};
}

bool IsTotalizadorEspecial(std::string_view codigo)
{
    const TotalizadorPlace place = FindTotalizador(codigo, 1);
    return place.posicao >= MAX_ALIQUOTAS;
}

} // namespace bancada
