// The facts file: what a legal audit file tells of a register that no row of its database holds.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace bancada::arquivo
{

// Every field may be missing: an optional without value, an empty list. Texts are as the record has
// them, numbers too; an instant is "yyyy-mm-dd hh:mm:ss", a date the first ten letters of one.
struct Fatos {
    struct Software {
        std::string versao;
        std::string dataHora;
    };
    struct Prestador {
        std::int64_t numero = 0;
        std::string dataHora, cnpj, ie;
        std::int64_t vendas = 0; // cents
    };
    struct Proprietario {
        std::int64_t usuario = 0;
        std::string dataHora, cnpj, ie;
        std::int64_t cro = 0;
        std::int64_t gt = 0; // cents
    };
    // A cipher of the grand total, or a currency symbol.
    struct Simbolo {
        std::string cnpj, dataHora, simbolo;
    };
    struct MemoriaDetalhe {
        std::string cnpj, numeroSerie;
    };
    struct Intervencao {
        std::int64_t cro = 0;
        std::string dataHora;
        bool perdaDados = false;
    };

    std::optional<std::string> extracao;     // E11: when the data were taken from the register
    std::optional<std::string> biblioteca;   // E01: version of the library that did it
    std::optional<Software> software;        // E01: the present version
    std::vector<Software> versoesSoftware;   // E07
    std::vector<Prestador> prestadores;      // E03
    std::vector<Proprietario> proprietarios; // E04
    std::vector<Simbolo> cifras;             // E05
    std::vector<Simbolo> moedas;             // E06
    std::vector<MemoriaDetalhe> memorias;    // E08
    std::vector<Intervencao> intervencoes;   // E09: those that no row tells of
    std::map<std::string, std::int64_t> contadores; // E11, by the field's name
    std::optional<bool> descontoIssqn;              // E12
    std::optional<std::string> fundoTroco;          // E20: names of the two totalizers of the till
    std::optional<std::string> sangria;
    std::optional<std::string> meioFundoTroco;  // E21: means in which floats are paid
    std::map<std::int64_t, std::string> ordens; // E14, E19 by COO: D or A where both adjust
    std::optional<std::string> assinatura;      // EAD
};

// Throws Unusable, with the path and the field, for a file that cannot be read or is no facts file.
[[nodiscard]] Fatos ReadFatos(const std::string& path);

// The file's content.
[[nodiscard]] std::string FatosText(const Fatos& fatos);

} // namespace bancada::arquivo
