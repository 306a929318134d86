#include "bancada/gerador/Consumidores.h"

#include <iterator>

namespace bancada
{

namespace
{

const char* const NOMES[] = {"ANA",   "ANTONIO", "BEATRIZ", "CARLOS", "CLARA",  "DANIEL", "ELISA",
                             "FABIO", "HELENA",  "IGOR",    "JOANA",  "JOSE",   "LUCIA",  "MARCOS",
                             "MARIA", "PAULO",   "REGINA",  "SERGIO", "TEREZA", "VITOR"};
const char* const SOBRENOMES[] = {"ALMEIDA",  "BARBOSA",  "CARDOSO", "COSTA",    "DIAS",
                                  "FERREIRA", "GOMES",    "LIMA",    "MARTINS",  "MELO",
                                  "NUNES",    "OLIVEIRA", "PEREIRA", "RIBEIRO",  "ROCHA",
                                  "SANTOS",   "SILVA",    "SOUZA",   "TEIXEIRA", "VIEIRA"};
const char* const RUAS[] = {"RUA DAS LARANJEIRAS",  "RUA DO COMERCIO",     "AV. BRASIL",
                            "RUA SETE DE SETEMBRO", "TRAVESSA DAS FLORES", "RUA XV DE NOVEMBRO"};

template <std::size_t SIZE>
const char* OneOf(Draw& draw, const char* const (&list)[SIZE])
{
    return list[draw.Below(SIZE)];
}

std::string DrawDigits(Draw& draw, int count)
{
    std::string digits;
    for (int i = 0; i < count; ++i) {
        digits += static_cast<char>('0' + draw.Below(10));
    }
    return digits;
}

// The next check digit, modulo 11. The weights rise from 2 at the last digit and begin anew after
// `maxWeight`.
char CheckDigit(const std::string& digits, int maxWeight)
{
    int sum = 0;
    int weight = 2;
    for (std::size_t i = digits.size(); i-- > 0;) {
        sum += (digits[i] - '0') * weight;
        weight = weight == maxWeight ? 2 : weight + 1;
    }
    const int remainder = sum % 11;
    return static_cast<char>(remainder < 2 ? '0' : '0' + 11 - remainder);
}

std::string WithCheckDigits(std::string digits, int maxWeight)
{
    digits += CheckDigit(digits, maxWeight);
    digits += CheckDigit(digits, maxWeight);
    return digits;
}

} // namespace

std::string DrawCpf(Draw& draw)
{
    // A CPF of one repeated digit has right check digits and is none.
    std::string digits = DrawDigits(draw, 9);
    while (digits.find_first_not_of(digits[0]) == std::string::npos) {
        digits = DrawDigits(draw, 9);
    }
    return WithCheckDigits(digits, 11);
}

std::string DrawCnpj(Draw& draw)
{
    return WithCheckDigits(DrawDigits(draw, 8) + "0001", 9);
}

std::string DrawNome(Draw& draw)
{
    const std::string nome = OneOf(draw, NOMES);
    return nome + " " + OneOf(draw, SOBRENOMES);
}

std::string DrawEndereco(Draw& draw)
{
    const std::string rua = OneOf(draw, RUAS);
    return rua + ", " + std::to_string(draw.Between(1, 1999));
}

std::string PunctuatedCpf(const std::string& cpf)
{
    return cpf.substr(0, 3) + "." + cpf.substr(3, 3) + "." + cpf.substr(6, 3) + "-" + cpf.substr(9);
}

} // namespace bancada
