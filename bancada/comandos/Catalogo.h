// The catalogue of the bench's commands.
#pragma once

#include "Interpreter.h"
#include "bancada/comandos/ComandoBancada.h"

#include <memory>
#include <string_view>
#include <vector>

namespace bancada
{

// One command. The texts are literals.
struct ItemCatalogo {
    const char* nome;      // its name on the tape
    EEscCmd codigo;        // its protocol code
    const char* classe;    // its firmware class
    const char* resumo;    // what it does, one line in English
    const char* tabelas;   // the tables that its logger writes, separated by ", "; empty for none
    const char* documento; // type of its row in outros_documentos; empty for none

    // Makes a new command on a register, which outlives it.
    std::unique_ptr<ComandoBancada> (*cria)(Registro& registro);
};

// Every command, in the order of their codes. The list lives as long as the program.
const std::vector<ItemCatalogo>& Catalogo();

// The command of that tape name, or null.
const ItemCatalogo* ProcuraComando(std::string_view nome);

} // namespace bancada
