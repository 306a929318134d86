// A run of the program in a folder of its own, and what it leaves there.
#pragma once

#include "tests/bancada/BancadaProgram.h"
#include "tests/support/Rows.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <string>

namespace bancada_test
{

// Begins a tape: a rate and a payment means.
inline const std::string PROGRAMMING =
    R"({"cmd":"insere_aliquota","em":"2026-03-02 07:50:00","tributacao":"T","indice":1,"percentual":"18.00"}
{"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"}
)";

inline const std::string OPENING =
    R"({"cmd":"abre_cupom"}
{"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"2","valor_unitario":"3.00","tributacao":"T","indice":1}
)";

inline const std::string CLOSING =
    R"({"cmd":"efetua_pagamento","meio":1,"valor":"10.00"}
{"cmd":"fecha_cupom"}
)";

inline const std::string RECEIPT = OPENING + CLOSING;

class RunFixture : public testing::Test
{
  protected:
    ProgramResult Run(const std::string& arguments) { return RunBancada(folder, arguments); }

    // Runs `tape`, the file "tape", into the database "db".
    ProgramResult RunTape(const std::string& tape, const std::string& options = "")
    {
        folder.Write("tape", tape);
        return Run("run tape --db db " + options);
    }

    // The first column of a query on "db", its rows joined by blanks.
    std::string Rows(const std::string& sql)
    {
        std::string all;
        for (const std::string& row : test_support::Rows(folder.File("db"), sql)) {
            all += (all.empty() ? "" : " ") + row.substr(0, row.find('|'));
        }
        return all;
    }

    TempFolder folder;
};

} // namespace bancada_test
