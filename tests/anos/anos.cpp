// One till for years of simulated days: a run a day on one database and one memory, with the power
// cut at random. Prints what it has come to as JSON, and a digest of every row of the database,
// which is the same whatever was cut and wherever it ran.
#include "bancada/Sha256.h"
#include "bancada/Unusable.h"
#include "bancada/caixa/TapeRun.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/leitura/DatabaseReading.h"
#include "bancada/memoria/MemoriaJson.h"
#include "tests/anos/CutDisk.h"
#include "tests/anos/DayTape.h"
#include "tests/support/Files.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <vector>

#if defined(__x86_64__)
#include <valgrind/callgrind.h>
#else
#define CALLGRIND_ZERO_STATS
#define CALLGRIND_DUMP_STATS_AT(name)
#endif

namespace
{

using namespace bancada;
using Json = nlohmann::ordered_json;

struct Options {
    int days = 3652;
    int documents = 270; // a day
    int cuts = 100;
    int coo = 500000;   // before the first document
    int reprintsTo = 0; // documents
    int firstDay = 0;   // of an older folder: the day that comes next
    std::uint32_t seed = 1;
    std::string folder;
    std::string expect; // the digest that is due, with nothing found by check
    bool round = false; // skips numbers until they come round
    bool count = false; // each command's instructions, for callgrind
};

std::int64_t MemoryKib()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word) {
        if (std::int64_t kib = 0; word == "VmRSS:" && status >> kib) {
            return kib;
        }
    }
    return 0;
}

constexpr int LAST_COO = 999999;
// How often --round makes the counter go on elsewhere.
constexpr int SKIPS = 3;

class Years
{
  public:
    explicit Years(const Options& options)
        : m_options(options), m_chance(options.seed), m_disk(options.seed)
    {
        if (options.firstDay == 0) {
            std::filesystem::remove_all(options.folder);
            std::filesystem::create_directories(options.folder);
            Memoria memoria;
            memoria.contadores[COUNTER_COO] = options.coo;
            const nlohmann::json memory = {{"formato", "ecf-bancada memoria"},
                                           {"versao", 1},
                                           {"registro", MemoriaToJson(memoria)}};
            std::ofstream(File("memory")) << memory.dump();
        }
        std::set<int> days;
        while (static_cast<int>(days.size()) < std::min(options.cuts, options.days)) {
            days.insert(options.firstDay +
                        static_cast<int>(m_chance() % static_cast<unsigned>(options.days)));
        }
        m_cutDays.assign(days.begin(), days.end());
    }

    void Run()
    {
        const int end = m_options.firstDay + m_options.days;
        for (int day = m_options.firstDay; day < end; ++day) {
            if (m_options.round) {
                SkipOn(day - m_options.firstDay);
            }
            const std::int64_t before = m_disk.Calls();
            if (std::binary_search(m_cutDays.begin(), m_cutDays.end(), day)) {
                m_disk.CutPowerAt(1 + Draw(std::max<std::int64_t>(m_callsADay, 1000)));
            }
            RunDay(anos::DayTape(day, m_options.documents, m_options.seed));
            m_callsADay = m_disk.Calls() - before;
            const int tenth = (day + 1 - m_options.firstDay) * 10 / m_options.days;
            if (tenth > static_cast<int>(m_memoryKib.size())) {
                m_memoryKib.push_back(MemoryKib());
                std::cerr << "day " << day + 1 << ", " << m_memoryKib.back() << " KiB\n";
            }
        }
        if (m_documents < m_options.reprintsTo) {
            RunDay(
                anos::ReprintTape(end, m_options.reprintsTo - m_documents, m_coo, m_options.seed));
        }
    }

    Json Result() const
    {
        Json result = {{"days", m_options.days},
                       {"documents", m_documents},
                       {"commands", m_commands},
                       {"power_cuts", m_cuts},
                       {"runs", m_runs},
                       {"first_coo", m_options.coo},
                       {"last_coo", m_coo},
                       {"wraps", m_wraps},
                       {"crz", m_crz},
                       {"wal_most_bytes", m_logBytes},
                       {"database_bytes", std::filesystem::file_size(File("db"))},
                       {"resident_kib", m_memoryKib}};
        AddFindings(result);
        result["rows_sha256"] = RowsDigest(result);
        return result;
    }

  private:
    // From 0 to below `end`.
    std::int64_t Draw(std::int64_t end) { return static_cast<std::int64_t>(m_chance()) % end; }

    std::string File(const std::string& name) const
    {
        return m_options.folder + "/registro." + name;
    }

    // Behind each quarter of the days the counter goes on elsewhere, so that the numbers of the
    // last quarter are those of the first and no step goes back.
    void SkipOn(int day)
    {
        const int quarter = m_options.days / 4;
        if (day % quarter != 0 || day / quarter < 1 || day / quarter > SKIPS) {
            return;
        }
        const std::array<int, SKIPS> to = {LAST_COO - 50, m_options.coo / 2, m_options.coo - 10};
        m_coo = to[static_cast<std::size_t>(day / quarter) - 1];
        std::ifstream file(File("memory"));
        nlohmann::json memory = nlohmann::json::parse(file);
        memory.erase("digest"); // of a memory that is written by hand there is none
        memory["registro"]["contadores"]["coo"] = m_coo;
        std::ofstream(File("memory")) << memory.dump();
    }

    // Until the day's tape is at its end, whatever happens to the power.
    void RunDay(const std::string& tape)
    {
        std::ofstream(File("tape")) << tape;
        for (;;) {
            try {
                ++m_runs;
                RunOnce();
                if (!m_disk.IsDark()) {
                    return;
                }
            } catch (const Unusable&) {
                if (!m_disk.IsDark()) {
                    throw;
                }
            }
            ++m_cuts;
            m_disk.ComeBack();
            // The index of the log is memory, and gone.
            std::filesystem::remove(File("db-shm"));
            // Now and then the power goes again while the register comes up.
            if (Draw(4) == 0) {
                m_disk.CutPowerAt(1 + Draw(12));
            }
        }
    }

    void RunOnce()
    {
        TapeReader tape(File("tape"));
        bancada::LogDatabase::Options options;
        options.vfs = anos::CutDisk::Name();
        TapeRun run(tape, File("db"), options,
                    std::make_unique<MemoriaFile>(File("memory"),
                                                  std::make_unique<anos::CutStorage>(m_disk)));
        static_cast<void>(run.TakeUp());
        if (m_runs == 1) {
            m_coo = Counter(run, COUNTER_COO);
        }
        Count(run); // a command that the power was cut behind
        TapeCommand line;
        while (!m_disk.IsDark() && tape.Next(line)) {
            CALLGRIND_ZERO_STATS;
            const Answer answer = run.Execute(line);
            if (m_options.count) {
                CALLGRIND_DUMP_STATS_AT(line.name.c_str());
            }
            if (m_disk.IsDark()) {
                return;
            }
            if (answer.rejected > 0 || answer.fate == Answer::Fate::REFUSED ||
                answer.fate == Answer::Fate::LOST) {
                throw std::runtime_error(line.name + " in line " + std::to_string(line.place.line) +
                                         ": " + answer.reason);
            }
            ++m_commands;
            Count(run);
            run.GetCaixa().RestAfter(line);
        }
        run.Fold();
    }

    static int Counter(TapeRun& run, FISCALDATA_COUNTER_INDEX counter)
    {
        return run.GetCaixa().GetRegistro().GetMemoria().contadores[static_cast<std::size_t>(
            counter)];
    }

    // What a command that is kept has added.
    void Count(TapeRun& run)
    {
        const int coo = Counter(run, COUNTER_COO);
        if (coo != m_coo) {
            ++m_documents;
            m_wraps += coo < m_coo ? 1 : 0;
            m_coo = coo;
        }
        m_crz = Counter(run, COUNTER_CRZ);
        std::error_code none;
        const std::uintmax_t bytes = std::filesystem::file_size(File("db-wal"), none);
        m_logBytes = std::max<std::uintmax_t>(m_logBytes, none ? 0 : bytes);
    }

    // The kinds of findings with their number; of repeated numbers, how many there are by the rows.
    void AddFindings(Json& result) const
    {
        const leitura::DatabaseReading database(File("db"));
        std::map<std::string, std::int64_t> kinds;
        const conferencia::CheckSummary summary =
            conferencia::CheckDatabase(database, nullptr, [&](const conferencia::Finding& finding) {
                ++kinds[InfoOf(finding.kind).name];
            });
        result["check_findings"] = summary.faults;
        result["check_notes"] = summary.notes;
        result["check_kinds"] = kinds;
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database.Handle(),
                           "SELECT count(*) FROM (SELECT cont_coo FROM "
                           "(SELECT cont_coo FROM cupom_fiscal UNION ALL "
                           "SELECT cont_coo FROM cupom_nf UNION ALL "
                           "SELECT cont_coo FROM outros_documentos WHERE id_tipo_documento <> 'CN')"
                           " GROUP BY cont_coo HAVING count(*) > 1)",
                           -1, &statement, nullptr);
        if (sqlite3_step(statement) == SQLITE_ROW) {
            result["numbers_that_stand_twice"] = sqlite3_column_int64(statement, 0);
        }
        sqlite3_finalize(statement);
    }

    // Every value of every row, in the order of the rows.
    std::string RowsDigest(Json& result) const
    {
        const leitura::DatabaseReading database(File("db"));
        std::vector<std::string> tables;
        const auto onTable = [](void* all, int, char** row, char**) {
            static_cast<std::vector<std::string>*>(all)->emplace_back(row[0]);
            return 0;
        };
        sqlite3_exec(database.Handle(),
                     "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE "
                     "'sqlite_%' ORDER BY name",
                     onTable, &tables, nullptr);
        Sha256 digest;
        std::int64_t rows = 0;
        for (const std::string& table : tables) {
            sqlite3_stmt* statement = nullptr;
            const std::string sql = "SELECT rowid, * FROM " + table + " ORDER BY rowid";
            sqlite3_prepare_v2(database.Handle(), sql.c_str(), -1, &statement, nullptr);
            digest.Add(table);
            while (sqlite3_step(statement) == SQLITE_ROW) {
                ++rows;
                for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                    const int bytes = sqlite3_column_bytes(statement, i);
                    const auto* text =
                        reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
                    digest.Add(std::to_string(sqlite3_column_type(statement, i)));
                    digest.Add(text == nullptr
                                   ? std::string_view()
                                   : std::string_view(text, static_cast<std::size_t>(bytes)));
                    digest.Add("|");
                }
            }
            sqlite3_finalize(statement);
        }
        result["rows"] = rows;
        return digest.Hex();
    }

    Options m_options;
    std::mt19937 m_chance;
    anos::CutDisk m_disk;
    std::vector<int> m_cutDays;
    std::int64_t m_callsADay = 0;

    std::int64_t m_documents = 0;
    std::int64_t m_commands = 0;
    std::int64_t m_cuts = 0;
    std::int64_t m_runs = 0;
    int m_coo = 0;
    int m_wraps = 0;
    int m_crz = 0;
    std::uintmax_t m_logBytes = 0;
    std::vector<std::int64_t> m_memoryKib;
};

} // namespace

int main(int argc, char** argv)
{
    Options options;
    CLI::App app("Runs a till for years, with its power cut at random.");
    app.add_option("FOLDER", options.folder, "Where the database and the memory are made")
        ->required();
    app.add_option("--days", options.days)->capture_default_str()->check(CLI::Range(1, 20000));
    app.add_option("--documents", options.documents, "Documents a day")
        ->capture_default_str()
        ->check(CLI::Range(2, 2000));
    app.add_option("--cuts", options.cuts, "Days whose power is cut")->capture_default_str();
    app.add_option("--coo", options.coo, "The COO before the first document")
        ->capture_default_str()
        ->check(CLI::Range(0, 999999));
    app.add_option("--reprints-to", options.reprintsTo,
                   "A day more, of reprints, until there have been so many documents");
    app.add_option("--seed", options.seed)->capture_default_str();
    app.add_option("--first-day", options.firstDay, "Goes on with the folder's files at this day");
    app.add_option("--expect", options.expect,
                   "The digest of the rows that is due; anything else, or a finding, is an error");
    app.add_flag("--round", options.round,
                 "The counter skips numbers until they come round: those skipped and those that "
                 "stand twice are all that check may find");
    app.add_flag("--count", options.count, "Dump each command's instructions, under callgrind");
    CLI11_PARSE(app, argc, argv);
    try {
        Years years(options);
        years.Run();
        if (options.count) {
            return EXIT_SUCCESS; // to read all the rows is no command's cost
        }
        const Json result = years.Result();
        std::cout << result.dump(1) << "\n";
        std::map<std::string, std::int64_t> due;
        if (options.round) {
            due = {{"coo-ausente", SKIPS},
                   {"coo-reutilizado", result["numbers_that_stand_twice"].get<std::int64_t>()}};
        }
        if (!options.expect.empty() &&
            (result["rows_sha256"] != options.expect || result["check_kinds"] != due ||
             result["power_cuts"] < options.cuts / 2)) {
            throw std::runtime_error("the rows, what check finds, or the power cuts are not those "
                                     "that are due");
        }
    } catch (const std::exception& error) {
        std::cerr << "anos: " << error.what() << "\n";
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
