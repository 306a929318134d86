// What each command costs while the logging database grows: runs a generated tape and measures in
// tenths of it. For the growth of the costs and of the memory, not for what a command costs. And it
// tells which command of the old till made the engine write and sync most.
//
// Two tills execute each command, one after the other, in turns. The old one is the measured one:
// one register, one database from the first command to the last. The young one takes over the state
// of the old one's register after each Z reduction and begins a database: what a command costs more
// on the old till than on the young one in the same moment is the age of its database, whatever the
// machine does meanwhile.
//
// A cost is the CPU time of the thread within Caixa::Execute: the register, the logger and the
// commit, without what other programs take of the processor. The databases should stand in memory
// (/dev/shm), where a sync costs nothing: what a disk takes for it is the same for every command
// and would cover the rest.
#include "bancada/caixa/Caixa.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/comandos/Configura.h"
#include "bancada/gerador/Generator.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"
#include "benchmarks/FileCalls.h"
#include "benchmarks/Histogram.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <sys/utsname.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace
{

using namespace bancada;
using Json = nlohmann::ordered_json;

constexpr std::int64_t TENTHS = 10;
constexpr char OPENS_RECEIPT[] = "abre_cupom";
constexpr char ENDS_DAY[] = "reducao_z";

#ifdef __clang__
constexpr char COMPILER[] = __VERSION__;
#else
constexpr char COMPILER[] = "g++ " __VERSION__;
#endif

std::int64_t Now(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return std::int64_t{now.tv_sec} * 1000000000 + now.tv_nsec;
}

[[noreturn]] void ThrowErrno(const std::string& what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

// A folder for the databases, removed with all that is in it.
class Folder
{
  public:
    explicit Folder(const std::string& within) : m_path(within + "/bench_load.XXXXXX")
    {
        if (mkdtemp(m_path.data()) == nullptr) {
            ThrowErrno("cannot make a folder in " + within);
        }
    }
    ~Folder()
    {
        std::error_code none;
        std::filesystem::remove_all(m_path, none);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string Path(const std::string& name) const { return m_path + "/" + name; }

  private:
    std::string m_path;
};

// The generator, in a process of its own, so that the memory measured is the register's; it waits
// while the pipe is full.
class TapeSource
{
  public:
    explicit TapeSource(const GeneratorOptions& options)
    {
        int ends[2];
        if (pipe(ends) != 0) {
            ThrowErrno("cannot make a pipe");
        }
        m_process = fork();
        if (m_process < 0) {
            ThrowErrno("cannot start the generator");
        }
        if (m_process == 0) {
            close(ends[0]);
            std::ofstream tape("/dev/fd/" + std::to_string(ends[1]));
            GenerateTape(options, tape);
            tape.close();
            _exit(tape ? EXIT_SUCCESS : EXIT_FAILURE);
        }
        close(ends[1]);
        m_end = ends[0];
    }
    ~TapeSource()
    {
        close(m_end);
        if (m_process > 0) {
            kill(m_process, SIGTERM);
            waitpid(m_process, nullptr, 0);
        }
    }
    TapeSource(const TapeSource&) = delete;
    TapeSource& operator=(const TapeSource&) = delete;

    std::string Path() const { return "/dev/fd/" + std::to_string(m_end); }

    // REQUIRES: the tape was read to its end.
    void Finish()
    {
        int status = 0;
        waitpid(m_process, &status, 0);
        m_process = -1;
        if (!WIFEXITED(status) || WEXITSTATUS(status) != EXIT_SUCCESS) {
            throw std::runtime_error("the generator did not write the whole tape");
        }
    }

  private:
    pid_t m_process = -1;
    int m_end = -1;
};

std::string Cpu()
{
    std::ifstream cpus("/proc/cpuinfo");
    std::string line;
    while (std::getline(cpus, line)) {
        const std::size_t colon = line.find(": ");
        if (line.rfind("model name", 0) == 0 && colon != std::string::npos) {
            return line.substr(colon + 2);
        }
    }
    return "unknown";
}

std::string Kernel()
{
    utsname names{};
    uname(&names);
    return std::string(names.sysname) + " " + names.release;
}

// Answers the "VmRSS:" and such of this process, in KiB.
std::int64_t MemoryKib(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (std::int64_t kib = 0; word == name && status >> kib) {
            return kib;
        }
    }
    throw std::runtime_error("/proc/self/status has no " + name);
}

Json ToJson(const Histogram& costs)
{
    return {{"count", costs.Count()}, {"median_ns", costs.Median()}, {"mean_ns", costs.Mean()}};
}

// Executes a command on one of the tills and counts its cost.
void Measure(Caixa& till, const TapeCommand& line, RtcAbsoluteTime em, Histogram& costs)
{
    const std::unique_ptr<ComandoBancada> command = till.Read(line);
    const std::int64_t began = Now(CLOCK_THREAD_CPUTIME_ID);
    const Answer answer = till.Execute(*command, em);
    costs.Add(Now(CLOCK_THREAD_CPUTIME_ID) - began);
    // A command that does less than it should must not pass for a fast one.
    if (answer.fate != Answer::Fate::KEPT || answer.rejected > 0) {
        throw TapeError(line.place, "refused, lost or rejected: " + answer.reason);
    }
}

// How the old till's database is kept.
struct Keeping {
    bool rests = false; // after each Z reduction
    int pageSize = 0;   // of its pages; 0 is what the owner chooses
};

// What the engine wrote and synced for one thing that a till did.
struct Work {
    std::string name;
    FileCalls calls;
};

Json ToJson(const Work& work)
{
    return {{"command", work.name},
            {"writes", work.calls.writes},
            {"bytes", work.calls.bytes},
            {"syncs", work.calls.syncs}};
}

class Load
{
  public:
    Load(const GeneratorOptions& options, const std::string& folder, const Keeping& keeping)
        : m_receipts(std::int64_t{options.jornadas} * options.cuponsPorJornada), m_folder(folder),
          m_source(options), m_tape(m_source.Path()), m_keeping(keeping),
          m_old(m_folder.Path(OLD), OldOptions(keeping))
    {
        // All that the measuring needs is there before the first measurement.
        for (const CatalogueEntry& item : Catalogue()) {
            m_costs[item.name];
        }
        BeginYoung();
    }

    Json ToTheEnd()
    {
        const std::int64_t began = Now(CLOCK_MONOTONIC);
        TapeCommand line;
        while (m_tape.Next(line)) {
            if (line.name == OPENS_RECEIPT && m_opened++ * TENTHS >= m_receipts * m_tenth) {
                BeginTenth();
            }
            Execute(line);
        }
        EndTenth();
        m_source.Finish();
        if (m_opened != m_receipts) {
            throw std::runtime_error("the tape has not as many receipts as it should");
        }
        const double seconds = static_cast<double>(Now(CLOCK_MONOTONIC) - began) / 1e9;
        return {{"commands", m_commands},
                {"seconds", seconds},
                {"most_writes", ToJson(m_mostWrites)},
                {"most_syncs", ToJson(m_mostSyncs)},
                {"longest_rest", ToJson(m_longestRest)},
                {"tenths", m_tenths}};
    }

  private:
    static constexpr char OLD[] = "old.db";
    static constexpr char YOUNG[] = "young.db";

    struct Costs {
        Histogram old;
        Histogram young;
    };

    static bancada::LogDatabase::Options OldOptions(const Keeping& keeping)
    {
        bancada::LogDatabase::Options options;
        options.vfs = CountingLayer();
        options.pageSize = keeping.pageSize;
        return options;
    }

    void BeginYoung()
    {
        m_young.reset(); // closed, so that nothing but the file itself is left
        std::filesystem::remove(m_folder.Path(YOUNG));
        m_young.emplace(m_folder.Path(YOUNG), bancada::LogDatabase::Options(),
                        m_old.GetRegistro().GetMemoria());
    }

    void BeginTenth()
    {
        // What programs the register before the first receipt belongs to the first tenth.
        if (m_tenth > 0) {
            EndTenth();
        }
        ++m_tenth;
    }

    void EndTenth()
    {
        Json commands = Json::object();
        for (auto& [name, costs] : m_costs) {
            if (costs.old.Count() > 0) {
                commands[name] = {{"old", ToJson(costs.old)}, {"young", ToJson(costs.young)}};
            }
            costs = {};
        }
        m_tenths.push_back({{"rss_kib", MemoryKib("VmRSS:")},
                            {"peak_kib", MemoryKib("VmHWM:")},
                            {"database_bytes", Size(OLD)},
                            {"wal_bytes", Size(std::string(OLD) + "-wal")},
                            {"commands", commands}});
        std::cerr << "tenth " << m_tenths.size() << " of " << TENTHS << '\n';
    }

    std::uintmax_t Size(const std::string& name) const
    {
        return std::filesystem::file_size(m_folder.Path(name));
    }

    void Execute(const TapeCommand& line)
    {
        if (line.name == CONFIGURA) {
            ExecuteConfigura(line, m_old.GetRegistro());
            ExecuteConfigura(line, m_young->GetRegistro());
            return;
        }
        const RtcAbsoluteTime em = m_clock.Next(line);
        Costs& costs = m_costs[line.name];
        // The second of the two finds the processor's caches warm: each is it every other time.
        const bool oldFirst = costs.old.Count() % 2 == 0;
        if (oldFirst) {
            MeasureOld(line, em, costs.old);
        }
        Measure(*m_young, line, em, costs.young);
        if (!oldFirst) {
            MeasureOld(line, em, costs.old);
        }
        ++m_commands;
        if (m_keeping.rests) {
            const FileCalls before = CountFileCalls();
            m_old.RestAfter(line);
            KeepMost(m_longestRest, {line.name, Since(before)}, &FileCalls::writes);
        }
        if (line.name == ENDS_DAY) {
            BeginYoung();
        }
    }

    void MeasureOld(const TapeCommand& line, RtcAbsoluteTime em, Histogram& costs)
    {
        const FileCalls before = CountFileCalls();
        Measure(m_old, line, em, costs);
        const Work work{line.name, Since(before)};
        KeepMost(m_mostWrites, work, &FileCalls::writes);
        KeepMost(m_mostSyncs, work, &FileCalls::syncs);
    }

    static FileCalls Since(const FileCalls& before)
    {
        const FileCalls& now = CountFileCalls();
        return {now.writes - before.writes, now.bytes - before.bytes, now.syncs - before.syncs};
    }

    static void KeepMost(Work& most, const Work& work, std::int64_t FileCalls::*calls)
    {
        if (work.calls.*calls > most.calls.*calls) {
            most = work;
        }
    }

    std::int64_t m_receipts;
    std::int64_t m_opened = 0; // receipts
    std::int64_t m_commands = 0;
    std::int64_t m_tenth = 0;

    Folder m_folder;
    TapeSource m_source;
    TapeReader m_tape;
    TapeClock m_clock;
    Keeping m_keeping;
    Caixa m_old;
    std::optional<Caixa> m_young;

    std::map<std::string, Costs> m_costs;
    Work m_mostWrites; // of the old till
    Work m_mostSyncs;
    Work m_longestRest;
    Json m_tenths = Json::array();
};

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Measures what each command costs while the logging database grows.");
    GeneratorOptions options;
    Keeping keeping;
    std::string folder = "/dev/shm";
    std::string output;
    app.add_option("--days", options.jornadas, "Days of the tape")
        ->required()
        ->check(CLI::Range(1, MAX_JORNADAS));
    app.add_option("--receipts", options.cuponsPorJornada, "Fiscal receipts a day")
        ->required()
        ->check(CLI::Range(1, MAX_CUPONS_POR_JORNADA));
    app.add_option("--seed", options.seed, "Seed of the tape")->required();
    app.add_option("--db", folder, "Where the databases are made, and removed in the end")
        ->type_name("DIR")
        ->capture_default_str();
    app.add_flag("--rest", keeping.rests, "The old till rests after each Z reduction");
    app.add_option("--page-size", keeping.pageSize, "Of the old till's database")
        ->type_name("BYTES");
    app.add_option("--output", output, "Where the measurements go, as JSON")
        ->required()
        ->type_name("FILE");
    CLI11_PARSE(app, argc, argv);

    try {
        if (std::int64_t{options.jornadas} * options.cuponsPorJornada < TENTHS) {
            throw std::runtime_error("a tape of less than ten receipts has no tenths");
        }
        Json result = {{"days", options.jornadas},
                       {"receipts_a_day", options.cuponsPorJornada},
                       {"seed", options.seed},
                       {"cpu", Cpu()},
                       {"kernel", Kernel()},
                       {"compiler", COMPILER},
                       {"sqlite", sqlite3_libversion()}};
        result.update(Load(options, folder, keeping).ToTheEnd());
        std::ofstream file(output);
        file << result.dump(1) << '\n';
        file.close();
        if (!file) {
            throw std::runtime_error("cannot write " + output);
        }
    } catch (const std::exception& error) {
        std::cerr << "bench_load: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
