// A register that runs a tape without a disk to wait for, and what it leaves as files.
#pragma once

#include "bancada/caixa/Caixa.h"
#include "bancada/memoria/MemoriaJson.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"
#include "tests/support/Files.h"

#include <functional>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sqlite3.h>
#include <string>

namespace bancada::arquivo_test
{

// Told of each command: the line, the register before and after it, and whether it was executed.
using Watch = std::function<void(const TapeCommand&, const Memoria&, const Memoria&, bool)>;

// The file of a memory without a run's part.
inline std::string MemoryText(const Memoria& memoria)
{
    const nlohmann::json json = {
        {"formato", "ecf-bancada memoria"}, {"versao", 1}, {"registro", MemoriaToJson(memoria)}};
    return json.dump();
}

// The register that a memory file begins with.
inline Memoria ReadMemory(const std::string& path)
{
    return MemoriaFromJson(nlohmann::json::parse(test_support::ReadFile(path)).at("registro"),
                           "registro");
}

// Runs the tape `tape` of the folder; leaves the files `name`.db and `name`.memory. Answers how
// many commands were refused, and the first of their reasons in `reason`.
inline int Replay(const test_support::TempFolder& folder, const std::string& tape,
                  const Memoria& start, const std::string& name, std::string& reason,
                  const Watch& watch = nullptr)
{
    Caixa caixa(":memory:", {}, start);
    TapeReader reader(folder.File(tape));
    TapeClock clock;
    TapeCommand line;
    int refused = 0;
    while (reader.Next(line)) {
        const Memoria before = watch ? caixa.GetRegistro().GetMemoria() : Memoria();
        const Answer answer = caixa.Run(line, clock);
        if (answer.fate == Answer::Fate::REFUSED) {
            if (refused++ == 0) {
                reason = line.name + " at line " + std::to_string(line.place.line) + ": " +
                         answer.reason;
            }
        }
        if (watch) {
            watch(line, before, caixa.GetRegistro().GetMemoria(), answer.Executed());
        }
    }
    folder.Write(name + ".memory", MemoryText(caixa.GetRegistro().GetMemoria()));
    sqlite3* file = nullptr;
    EXPECT_EQ(sqlite3_open(folder.File(name + ".db").c_str(), &file), SQLITE_OK);
    sqlite3_backup* backup = sqlite3_backup_init(file, "main", caixa.Database().Handle(), "main");
    EXPECT_NE(backup, nullptr);
    EXPECT_EQ(sqlite3_backup_step(backup, -1), SQLITE_DONE);
    sqlite3_backup_finish(backup);
    sqlite3_close(file);
    return refused;
}

} // namespace bancada::arquivo_test
