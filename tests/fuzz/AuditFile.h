// What is claimed of the import of an audit file, whatever it holds.
#pragma once

#include "bancada/Unusable.h"
#include "bancada/arquivo/Comparacao.h"
#include "bancada/arquivo/Importacao.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/memoria/MemoriaFile.h"
#include "bancada/registro/Registro.h"
#include "tests/fuzz/Day.h"
#include "tests/fuzz/Hold.h"

#include <sstream>
#include <string>

inline void HoldTape(const std::string& text)
{
    bancada::TapeReader tape(Scratch().Write("imported.jsonl", text));
    bancada::Caixa caixa(":memory:");
    bancada::TapeCommand line;
    while (tape.Next(line)) {
        if (bancada::FindComando(line.name) != nullptr) {
            static_cast<void>(caixa.Read(line));
        }
    }
}

// It is refused before a line of the tape is written, or there come of it a tape of which every
// line is a command with its fields, a memory that a register can begin with, and facts that can be
// read.
inline void HoldAuditFile(const std::string& text)
{
    const std::string path = Scratch().Write("audit.txt", text);
    std::ostringstream tape;
    std::ostringstream notes;
    bancada::arquivo::ImportResult result;
    try {
        result = bancada::arquivo::Import(path, tape, notes);
    } catch (const bancada::Unusable&) {
        Hold(tape.str().empty());
        return;
    }
    HoldTape(tape.str());
    const bancada::MemoriaFile memory(Scratch().Write("imported.memory", result.memory));
    const bancada::Registro registro(memory.State());
    const std::string facts = bancada::arquivo::FatosText(result.fatos);
    Hold(FatosText(bancada::arquivo::ReadFatos(Scratch().Write("imported.facts", facts))) == facts);

    // What can be imported can be compared, and is the same as itself.
    const auto differs = [](const bancada::arquivo::Difference&) { Hold(false); };
    Hold(!bancada::arquivo::Compare(path, path, differs).Differs());
}
