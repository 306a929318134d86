// The catalogue of the bench's commands.
#pragma once

#include "Interpreter.h"
#include "bancada/comandos/ComandoBancada.h"
#include "bancada/tape/FaultSink.h"

#include <memory>
#include <string_view>
#include <vector>

namespace bancada
{

// One command. The texts are literals.
struct CatalogueEntry {
    const char* name;         // its name on the tape
    EEscCmd code;             // its protocol code
    const char* commandClass; // its firmware class
    const char* summary;      // what it does, one line; marked
    const char* tables; // the tables that its logger writes, separated by ", "; empty for none
    const char* documentType; // type of its row in outros_documentos; empty for none

    // Makes a new command on a register, which outlives it.
    std::unique_ptr<ComandoBancada> (*make)(Registro& registro);
};

// Every command, in the order of their codes. The list lives as long as the program.
const std::vector<CatalogueEntry>& Catalogue();

// The command of that tape name, or null.
[[nodiscard]] const CatalogueEntry* FindComando(std::string_view name);

struct TapeCommand;

// The command of a line of the tape, made on `registro` and its fields filled; its faults go to
// `sink`. Null if there is none of that name.
[[nodiscard]] std::unique_ptr<ComandoBancada>
ReadComando(const TapeCommand& line, Registro& registro, const FaultSink& sink = nullptr);

} // namespace bancada
