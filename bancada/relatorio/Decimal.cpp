#include "bancada/relatorio/Decimal.h"

#include <cmath>
#include <limits>

namespace bancada::relatorio
{
namespace
{

constexpr Decimal ilegivel(int casas)
{
    return {0, casas, false};
}

std::int64_t potencia10(int expoente)
{
    std::int64_t resultado = 1;
    while (expoente-- > 0) {
        resultado *= 10;
    }
    return resultado;
}

std::string texto(const Decimal& valor, int minCasas, char decimal, const char* milhar)
{
    const bool negativo = valor.unidades < 0;
    // Through unsigned, so that the most negative value has its digits too.
    const std::uint64_t modulo = negativo ? 0U - static_cast<std::uint64_t>(valor.unidades)
                                          : static_cast<std::uint64_t>(valor.unidades);
    const auto escala = static_cast<std::uint64_t>(potencia10(valor.casas));

    const std::string inteiros = std::to_string(modulo / escala);
    std::string saida = negativo ? "-" : "";
    for (std::size_t i = 0; i < inteiros.size(); ++i) {
        if (i > 0 && (inteiros.size() - i) % 3 == 0) {
            saida += milhar;
        }
        saida += inteiros[i];
    }

    std::string fracao = std::to_string(escala + modulo % escala).substr(1);
    while (fracao.size() > static_cast<std::size_t>(minCasas) && fracao.back() == '0') {
        fracao.pop_back();
    }
    if (!fracao.empty()) {
        saida += decimal;
        saida += fracao;
    }
    return saida;
}

} // namespace

Decimal lerDecimal(sqlite3_stmt* stmt, int coluna, int casas)
{
    const std::int64_t escala = potencia10(casas);
    switch (sqlite3_column_type(stmt, coluna)) {
    case SQLITE_NULL:
        return {0, casas, true};
    case SQLITE_INTEGER: {
        std::int64_t unidades = 0;
        if (__builtin_mul_overflow(std::int64_t{sqlite3_column_int64(stmt, coluna)}, escala,
                                   &unidades)) {
            return ilegivel(casas);
        }
        return {unidades, casas, true};
    }
    case SQLITE_FLOAT: {
        const double escalado =
            std::round(sqlite3_column_double(stmt, coluna) * static_cast<double>(escala));
        // Below 2^63, which is itself a double; false for an infinity.
        constexpr double limite = 9223372036854775808.0;
        if (!(std::fabs(escalado) < limite)) {
            return ilegivel(casas);
        }
        return {static_cast<std::int64_t>(escalado), casas, true};
    }
    default:
        return ilegivel(casas);
    }
}

Decimal comCasas(const Decimal& valor, int casas)
{
    std::int64_t unidades = 0;
    if (!valor.legivel ||
        __builtin_mul_overflow(valor.unidades, potencia10(casas - valor.casas), &unidades)) {
        return ilegivel(casas);
    }
    return {unidades, casas, true};
}

Decimal operator+(const Decimal& a, const Decimal& b)
{
    std::int64_t unidades = 0;
    if (!a.legivel || !b.legivel || __builtin_add_overflow(a.unidades, b.unidades, &unidades)) {
        return ilegivel(a.casas);
    }
    return {unidades, a.casas, true};
}

Decimal operator-(const Decimal& a, const Decimal& b)
{
    std::int64_t unidades = 0;
    if (!a.legivel || !b.legivel || __builtin_sub_overflow(a.unidades, b.unidades, &unidades)) {
        return ilegivel(a.casas);
    }
    return {unidades, a.casas, true};
}

std::string textoBr(const Decimal& valor, int minCasas)
{
    return valor.legivel ? texto(valor, minCasas, ',', ".") : "?";
}

std::string textoPonto(const Decimal& valor, int minCasas)
{
    return valor.legivel ? texto(valor, minCasas, '.', "") : "";
}

} // namespace bancada::relatorio
