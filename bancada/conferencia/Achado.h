// What the reconciliation of a logging database finds.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bancada
{

// A fault is something that the rows should not show. A note is something that the loggers leave on
// purpose, or that the rows cannot decide, and that a reader of the rows should know.
enum class Peso {
    FALTA,
    AVISO
};

// One kind of finding: its word (stable, for programs), its weight, and what it means.
struct TipoAchado {
    const char* nome;
    Peso peso;
    const char* significado;
};

// Every kind of finding there is.
const std::vector<TipoAchado>& TiposDeAchado();

struct Achado {
    const TipoAchado* tipo;
    // What it concerns, e.g. "COO 120" or "CRZ 9".
    std::string chave;
    // One line of plain text.
    std::string texto;
    // The firmware log names a lost row of the same document or day.
    bool explicado = false;
};

// Takes the findings one by one, in the order in which they are made.
using DestinoAchados = std::function<void(const Achado&)>;

} // namespace bancada
