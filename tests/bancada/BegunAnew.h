// The databases of a register that began new ones on its way.
#pragma once

#include "LogDatabase/LogDatabase.h"
#include "bancada/caixa/Caixa.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace bancada_test
{

// Runs an example's tape in `folder` and begins a new database behind each of the first `seams` Z
// reductions, as a firmware does (LogDatabase::BeginAnew). Answers the databases in their order:
// those that were set aside, and the one that goes on.
inline std::vector<std::string> RunAndBeginAnew(const test_support::TempFolder& folder,
                                                const std::string& example, std::size_t seams)
{
    const std::string database = folder.File("loja.db");
    std::vector<std::string> databases;
    bancada::TapeReader tape(std::string(ECF_SOURCE_DIR "/examples/") + example + ".jsonl");
    bancada::TapeClock clock;
    std::optional<bancada::Caixa> caixa(std::in_place, database);
    for (bancada::TapeCommand line; tape.Next(line);) {
        EXPECT_NE(caixa->Run(line, clock).fate, bancada::Answer::Fate::LOST);
        if (line.name != "reducao_z" || databases.size() == seams) {
            continue;
        }
        const bancada::Memoria memoria = caixa->GetRegistro().GetMemoria();
        caixa.reset();
        const std::string aside =
            folder.File("loja-" + std::to_string(databases.size() + 1) + ".db");
        databases.push_back(aside);
        ::LogDatabase owner;
        EXPECT_EQ(owner.Open(database.c_str(), {}), LogFault::NONE) << owner.Text();
        EXPECT_EQ(owner.BeginAnew(aside.c_str()), LogFault::NONE) << owner.Text();
        owner.Close();
        caixa.emplace(database, bancada::LogDatabase::Options(), memoria);
    }
    databases.push_back(database);
    return databases;
}

} // namespace bancada_test
