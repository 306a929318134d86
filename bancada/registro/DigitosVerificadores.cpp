#include "bancada/registro/DigitosVerificadores.h"

#include <algorithm>

namespace bancada
{

namespace
{

bool SoDigitosEDiferentes(const std::string& numero, std::size_t tamanho)
{
    return numero.size() == tamanho &&
           std::all_of(numero.begin(), numero.end(), [](char c) { return c >= '0' && c <= '9'; }) &&
           numero.find_first_not_of(numero[0]) != std::string::npos;
}

// Modulo 11 over the first `quantos` digits. Weights grow from 2, beginning with the digit nearest
// to the check digit, and start over at 2 after `maiorPeso`.
char DigitoVerificador(const std::string& numero, std::size_t quantos, int maiorPeso)
{
    int soma = 0;
    int peso = 2;
    for (std::size_t i = quantos; i-- > 0;) {
        soma += (numero[i] - '0') * peso;
        peso = peso == maiorPeso ? 2 : peso + 1;
    }
    const int resto = soma % 11;
    return static_cast<char>('0' + (resto < 2 ? 0 : 11 - resto));
}

bool Confere(const std::string& numero, std::size_t tamanho, int maiorPeso)
{
    return SoDigitosEDiferentes(numero, tamanho) &&
           numero[tamanho - 2] == DigitoVerificador(numero, tamanho - 2, maiorPeso) &&
           numero[tamanho - 1] == DigitoVerificador(numero, tamanho - 1, maiorPeso);
}

} // namespace

bool CPFCorreto(const std::string& numero)
{
    return Confere(numero, TAMANHO_CPF, 11);
}

bool CNPJCorreto(const std::string& numero)
{
    return Confere(numero, TAMANHO_CNPJ, 9);
}

} // namespace bancada
