// What the owner of the database costs beside the engine: the commands of a tape on a device that
// logs by the module and its owner, and the same texts in the same transactions by a plain program.
// For counting instructions from outside, by owner.py; not for times, which the disk makes.
//
//   bench_owner TAPE FOLDER [memory-statistics]
//
// Each pass has a new database in FOLDER, made before anything is counted. Prints how many commands
// and texts there are. memory-statistics leaves the engine those of its memory, in all passes, and
// prints the most that it held for the owner.
#include "LogDatabase/LogDatabase.h"
#include "bancada/Unusable.h"
#include "bancada/caixa/Caixa.h"
#include "bancada/comandos/Configura.h"
#include "bancada/log/FirmwareDuty.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <valgrind/callgrind.h>
#include <vector>

namespace
{

using Texts = std::vector<std::string>;

// While it is not null, what the loggers hand to the engine goes there, counting queries included.
Texts* watching = nullptr;

void Note(const char* sql)
{
    if (watching != nullptr) {
        watching->emplace_back(sql);
    }
}

} // namespace

extern "C" {

// The linker's --wrap sends the program's calls of the engine through here.
using Callback = int (*)(void*, int, char**, char**);
int RealExec(sqlite3* db, const char* sql, Callback callback, void* argument,
             char** error) __asm__("__real_sqlite3_exec");
int RealPrepare(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                const char** tail) __asm__("__real_sqlite3_prepare_v2");
int WrapExec(sqlite3* db, const char* sql, Callback callback, void* argument,
             char** error) __asm__("__wrap_sqlite3_exec");
int WrapPrepare(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                const char** tail) __asm__("__wrap_sqlite3_prepare_v2");

int WrapExec(sqlite3* db, const char* sql, Callback callback, void* argument, char** error)
{
    Note(sql);
    return RealExec(db, sql, callback, argument, error);
}

int WrapPrepare(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                const char** tail)
{
    Note(sql);
    return RealPrepare(db, sql, bytes, statement, tail);
}

// What is counted: one command each. The assembly keeps the calls from becoming jumps.

__attribute__((noinline)) void CountedPlain(sqlite3* db, const Texts& texts)
{
    RealExec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    for (const std::string& sql : texts) {
        RealExec(db, sql.c_str(), nullptr, nullptr, nullptr);
    }
    RealExec(db, "COMMIT", nullptr, nullptr, nullptr);
    asm volatile("" ::: "memory");
}

__attribute__((noinline)) LogState CountedOwner(LogDatabase& owner, const Texts& texts)
{
    owner.Begin();
    for (const std::string& sql : texts) {
        RealExec(owner.Handle(), sql.c_str(), nullptr, nullptr, nullptr);
    }
    const LogState state = owner.Commit().state;
    asm volatile("" ::: "memory");
    return state;
}

__attribute__((noinline)) LogState CountedDevice(LogDatabase& owner, Command& command)
{
    owner.Begin();
    command.DBLogger(owner.Handle());
    const LogState state = owner.Commit().state;
    asm volatile("" ::: "memory");
    return state;
}

__attribute__((noinline)) bool CountedBench(bancada::Caixa& till, bancada::ComandoBancada& command,
                                            RtcAbsoluteTime em)
{
    const bool kept = till.Execute(command, em).fate == bancada::Answer::Fate::KEPT;
    asm volatile("" ::: "memory");
    return kept;
}
}

namespace
{

// A command of the tape, made for a till whose register is as the commands before have left it.
using Work = std::function<void(bancada::ComandoBancada& command, RtcAbsoluteTime em)>;

void RunTape(const std::string& tape, bancada::Caixa& till, const Work& work)
{
    bancada::TapeReader reader(tape);
    bancada::TapeClock clock;
    bancada::TapeCommand line;
    while (reader.Next(line)) {
        if (line.name == bancada::CONFIGURA) {
            bancada::ExecuteConfigura(line, till.GetRegistro());
            continue;
        }
        const auto command = till.Read(line);
        work(*command, clock.Next(line));
    }
}

// A device: the register carries the command out, and then `log` logs it.
void RunDevice(const std::string& tape, const std::function<LogState(Command&)>& log)
{
    bancada::Caixa till(":memory:");
    const bancada::FirmwareDuty duty(till.Log(),
                                     [&till] { return till.GetRegistro().GetRatearSubtotal(); });
    RunTape(tape, till, [&](bancada::ComandoBancada& of, RtcAbsoluteTime em) {
        Command& command = of.GetCommand();
        command.FDController = &till.GetRegistro();
        command.m_dtExecStart = em;
        command.m_dtExecEnd = RtcAbsoluteTime(matlong[0]);
        if (!command.InitCheck(nullptr) || !command.FiscalCheck()) {
            throw std::runtime_error("a command was refused");
        }
        command.Fiscal();
        till.GetRegistro().AdvanceRelogio(em);
        if (log(command) != LogState::KEPT) {
            throw std::runtime_error("a command was lost");
        }
        command.FiscalPostPrint();
        command.Log();
    });
}

void OpenOwner(LogDatabase& owner, const std::string& path)
{
    if (owner.Open(path.c_str()) != LogFault::NONE) {
        throw std::runtime_error(path + ": " + owner.Text());
    }
}

std::vector<Texts> ReadTexts(const std::string& tape, const std::string& path)
{
    LogDatabase owner;
    OpenOwner(owner, path);
    std::vector<Texts> all;
    RunDevice(tape, [&](Command& command) {
        owner.Begin();
        watching = &all.emplace_back();
        command.DBLogger(owner.Handle());
        watching = nullptr;
        return owner.Commit().state;
    });
    return all;
}

void PassPlain(const std::vector<Texts>& all, const std::string& path)
{
    LogDatabase maker;
    OpenOwner(maker, path);
    maker.Close();
    sqlite3* db = nullptr;
    // It reads the schema as it reads the tables, before anything is counted.
    constexpr char SETTINGS[] = "PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; "
                                "SELECT count(*) FROM cupom_fiscal";
    if (sqlite3_open(path.c_str(), &db) != SQLITE_OK ||
        RealExec(db, SETTINGS, nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(path + ": " + sqlite3_errmsg(db));
    }
    CALLGRIND_ZERO_STATS;
    for (const Texts& texts : all) {
        CountedPlain(db, texts);
    }
    CALLGRIND_DUMP_STATS_AT("plain");
    sqlite3_close(db);
}

void PassOwner(const std::vector<Texts>& all, const std::string& path)
{
    LogDatabase owner;
    OpenOwner(owner, path);
    CALLGRIND_ZERO_STATS;
    for (const Texts& texts : all) {
        if (CountedOwner(owner, texts) != LogState::KEPT) {
            throw std::runtime_error("a command was lost");
        }
    }
    CALLGRIND_DUMP_STATS_AT("owner");
}

void PassDevice(const std::string& tape, const std::string& path)
{
    LogDatabase owner;
    OpenOwner(owner, path);
    CALLGRIND_ZERO_STATS;
    RunDevice(tape, [&owner](Command& command) { return CountedDevice(owner, command); });
    CALLGRIND_DUMP_STATS_AT("device");
}

void PassBench(const std::string& tape, const std::string& path)
{
    bancada::Caixa till(path);
    CALLGRIND_ZERO_STATS;
    RunTape(tape, till, [&till](bancada::ComandoBancada& command, RtcAbsoluteTime em) {
        if (!CountedBench(till, command, em)) {
            throw std::runtime_error("a command was refused or lost");
        }
    });
    CALLGRIND_DUMP_STATS_AT("bench");
}

} // namespace

int main(int argc, char** argv)
{
    const bool statistics = argc == 4 && std::strcmp(argv[3], "memory-statistics") == 0;
    if (argc != 3 && !statistics) {
        std::fputs("bench_owner TAPE FOLDER [memory-statistics]\n", stderr);
        return 2;
    }
    if (statistics && sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 1) != SQLITE_OK) {
        return 1;
    }
    try {
        const std::string tape = argv[1];
        const std::string folder = std::string(argv[2]) + "/";
        const std::vector<Texts> all = ReadTexts(tape, folder + "texts.db");
        std::size_t texts = 0;
        for (const Texts& one : all) {
            texts += one.size();
        }
        PassPlain(all, folder + "plain.db");
        sqlite3_memory_highwater(1);
        PassOwner(all, folder + "owner.db");
        const sqlite3_int64 most = sqlite3_memory_highwater(0);
        PassDevice(tape, folder + "device.db");
        PassBench(tape, folder + "bench.db");
        std::printf("%zu commands, %zu texts\n", all.size(), texts);
        if (statistics) {
            std::printf("the engine held at most %lld bytes for the owner\n",
                        static_cast<long long>(most));
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench_owner: %s\n", error.what());
        return 1;
    }
    return 0;
}
