// A device of the two libraries and nothing else: the loggers on a model of fixed answers, and the
// owner of their database on a disk that fails.
#pragma once

#include "LogDatabase/LogDatabase.h"
#include "tests/catalogue/LoggerCases.h"
#include "tests/falhas/Leitura.h"
#include "tests/falhas/SimulatedDisk.h"

#include <string>
#include <vector>

namespace dono
{

// The commands of a run: programming, a receipt with adjustments and an apportioned closing, a
// withdrawal, a Z; the loggers of several statements, of counting queries and of a statement that
// is rejected are among them.
const std::vector<const LoggerCase*>& Comandos();

// Whether the commands carry numbers, as those of a caller with a memory do.
enum class Numbers {
    NONE,
    EACH
};

class Aparelho
{
  public:
    // `disk` outlives it. Opens nothing yet.
    Aparelho(const falhas::SimulatedDisk& disk, Numbers numbers, int pageSize = 0);
    ~Aparelho();
    Aparelho(const Aparelho&) = delete;
    Aparelho& operator=(const Aparelho&) = delete;

    LogFault Open();
    // Before that: `disk`, the same, gives its files other names where the database is set aside.
    void MoveOn(falhas::SimulatedDisk& disk) { m_disk = &disk; }
    // Executes the command of that place, and after the last one rests.
    LogOutcome Run(std::size_t command);

    LogDatabase& Database() { return m_database; }
    // The firmware log: its entries, and how many of them are synced.
    const std::vector<std::string>& Entries() const { return m_entries; }
    std::size_t Synced() const { return m_synced; }

    // What GravaLog and the apportionment's setting come to.
    void Take(const char* entry) { m_entries.emplace_back(entry); }
    int RatearSubtotal() const { return m_ratear; }

  private:
    std::string m_vfs;
    Numbers m_numbers;
    int m_pageSize;
    falhas::SimulatedDisk* m_disk = nullptr;
    int m_ratear = 0;
    std::vector<std::string> m_entries;
    std::size_t m_synced = 0;
    LogDatabase m_database;
};

// What the database holds after the first `count` commands without a fault, when those that `lost`
// names did not run.
const std::string& Expected(std::size_t count, const std::vector<bool>& lost);

// ECF_FALHAS_PASSO: each k-th call alone is tried, for builds that are slow.
int Step();

} // namespace dono
