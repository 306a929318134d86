// What the fuzzers of the bench begin with: a day of examples/primeira_semana.jsonl as the register
// leaves it.
#pragma once

#include "bancada/arquivo/Exportacao.h"
#include "bancada/caixa/Caixa.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"
#include "tests/support/Files.h"

#include <sstream>
#include <string>

// Where the fuzzers' files stand; the folder is removed when the program ends in good order.
inline const test_support::TempFolder& Scratch()
{
    static const test_support::TempFolder folder;
    return folder;
}

struct Day {
    // The bytes of the database with its log beside it, as a power cut leaves them, and of the
    // database closed in good order.
    std::string cut;
    std::string log;
    std::string closed;
    bancada::Memoria open; // in the middle of a receipt, with a payment
    bancada::Memoria end;
    std::string auditFile;

    Day();
};

// Up to its Z reduction; the one name that is too long for an audit file is shorter.
inline std::string TapeOfTheDay()
{
    const std::string longName = "GARANTIA ESTENDIDA";
    const std::string last = "\"reducao_z\"}\n";
    std::string tape = test_support::ReadFile(ECF_SOURCE_DIR "/examples/oficina.jsonl");
    tape.resize(tape.find(last) + last.size());
    return tape.replace(tape.find(longName), longName.size(), "GARANTIA");
}

inline Day::Day()
{
    const std::string path = Scratch().File("day.db");
    {
        bancada::Caixa caixa(path);
        bancada::TapeReader tape(Scratch().Write("day.jsonl", TapeOfTheDay()));
        bancada::TapeClock clock;
        bancada::TapeCommand line;
        while (tape.Next(line)) {
            static_cast<void>(caixa.Run(line, clock));
            if (line.name == "efetua_pagamento") {
                open = caixa.GetRegistro().GetMemoria();
            }
        }
        end = caixa.GetRegistro().GetMemoria();
        cut = Scratch().Read("day.db");
        log = Scratch().Read("day.db-wal");
    }
    closed = Scratch().Read("day.db");

    bancada::arquivo::ExportOptions options;
    options.database = path;
    options.library = "1.0.0";
    std::ostringstream out;
    std::ostringstream notes;
    bancada::arquivo::Export(options, out, notes);
    auditFile = out.str();
}

inline const Day& ADay()
{
    static const Day day;
    return day;
}
