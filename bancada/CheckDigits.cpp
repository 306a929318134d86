#include "bancada/CheckDigits.h"

#include <algorithm>

namespace bancada
{

namespace
{

bool AreDigitsNotAllAlike(const std::string& numero, std::size_t size)
{
    return numero.size() == size &&
           std::all_of(numero.begin(), numero.end(), [](char c) { return c >= '0' && c <= '9'; }) &&
           numero.find_first_not_of(numero[0]) != std::string::npos;
}

// Modulo 11 over the first `count` digits. Weights grow from 2, beginning with the digit nearest
// to the check digit, and start over at 2 after `maxWeight`.
char CheckDigit(const std::string& numero, std::size_t count, int maxWeight)
{
    int sum = 0;
    int weight = 2;
    for (std::size_t i = count; i-- > 0;) {
        sum += (numero[i] - '0') * weight;
        weight = weight == maxWeight ? 2 : weight + 1;
    }
    const int remainder = sum % 11;
    return static_cast<char>('0' + (remainder < 2 ? 0 : 11 - remainder));
}

bool HasCheckDigits(const std::string& numero, std::size_t size, int maxWeight)
{
    return AreDigitsNotAllAlike(numero, size) &&
           numero[size - 2] == CheckDigit(numero, size - 2, maxWeight) &&
           numero[size - 1] == CheckDigit(numero, size - 1, maxWeight);
}

} // namespace

bool IsCPF(const std::string& numero)
{
    return HasCheckDigits(numero, CPF_DIGITS, 11);
}

bool IsCNPJ(const std::string& numero)
{
    return HasCheckDigits(numero, CNPJ_DIGITS, 9);
}

} // namespace bancada
