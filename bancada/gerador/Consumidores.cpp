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

template <std::size_t tamanho>
const char* Um(Draw& sorteio, const char* const (&lista)[tamanho])
{
    return lista[sorteio.Ate(tamanho)];
}

std::string Digitos(Draw& sorteio, int quantos)
{
    std::string digitos;
    for (int i = 0; i < quantos; ++i) {
        digitos += static_cast<char>('0' + sorteio.Ate(10));
    }
    return digitos;
}

// The next check digit, modulo 11. The weights rise from 2 at the last digit and begin anew after
// `maiorPeso`.
char DigitoModulo11(const std::string& digitos, int maiorPeso)
{
    int soma = 0;
    int peso = 2;
    for (std::size_t i = digitos.size(); i-- > 0;) {
        soma += (digitos[i] - '0') * peso;
        peso = peso == maiorPeso ? 2 : peso + 1;
    }
    const int resto = soma % 11;
    return static_cast<char>(resto < 2 ? '0' : '0' + 11 - resto);
}

std::string ComDigitos(std::string digitos, int maiorPeso)
{
    digitos += DigitoModulo11(digitos, maiorPeso);
    digitos += DigitoModulo11(digitos, maiorPeso);
    return digitos;
}

} // namespace

std::string DrawCpf(Draw& sorteio)
{
    // A CPF of one repeated digit has right check digits and is none.
    std::string digitos = Digitos(sorteio, 9);
    while (digitos.find_first_not_of(digitos[0]) == std::string::npos) {
        digitos = Digitos(sorteio, 9);
    }
    return ComDigitos(digitos, 11);
}

std::string DrawCnpj(Draw& sorteio)
{
    return ComDigitos(Digitos(sorteio, 8) + "0001", 9);
}

std::string DrawNome(Draw& sorteio)
{
    const std::string nome = Um(sorteio, NOMES);
    return nome + " " + Um(sorteio, SOBRENOMES);
}

std::string DrawEndereco(Draw& sorteio)
{
    const std::string rua = Um(sorteio, RUAS);
    return rua + ", " + std::to_string(sorteio.Entre(1, 1999));
}

std::string PunctuatedCpf(const std::string& cpf)
{
    return cpf.substr(0, 3) + "." + cpf.substr(3, 3) + "." + cpf.substr(6, 3) + "-" + cpf.substr(9);
}

} // namespace bancada
