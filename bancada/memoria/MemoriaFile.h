// The memory of a register: its state from run to run, in step with the logging database.
#pragma once

#include "bancada/memoria/CommandProgress.h"
#include "bancada/memoria/MemoriaJournal.h"
#include "bancada/memoria/Storage.h"
#include "bancada/registro/Memoria.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace bancada
{

// A command is carried out in RAM and its rows wait in an open transaction that also numbers the
// database. Before COMMIT a record of what it has changed goes to the journal beside the file
// (WritePending). After a crash the database tells whether the last record holds: it does if the
// database carries the command's number; if not, the command was never replied, and is run again.
// The file itself is written when a run starts and ends, and when the journal has grown.
// docs/memory.md tells the form of both.
//
// Whatever cannot be read or written is thrown as Unusable. After a failed write the register must
// not go on: nobody could tell any more what it has done.
class MemoriaFile
{
  public:
    // Of the journal: about a thousand commands.
    static constexpr std::size_t MAX_JOURNAL_BYTES = 4 * 1024 * 1024;

    // Reads the file `path` and its journal, kept in `storage` (null: in files). One that is
    // missing is a register as it leaves the factory. Throws Unusable for a file that is damaged,
    // is none of these, was written by a newer program or has a journal that belongs to another;
    // all stay as they are. A journal larger than `maxJournalBytes` is written into the file.
    explicit MemoriaFile(const std::string& path, std::unique_ptr<Storage> storage = nullptr,
                         std::size_t maxJournalBytes = MAX_JOURNAL_BYTES);

    // Whether the file tells how far its commands have come: it then belongs to one database. A
    // file that is missing or was written by hand does not.
    bool HasProgress() const { return m_hasProgress; }

    // Throws Unusable, naming both numbers, if the database `database`, which carries `number`, is
    // not the one that the file belongs to.
    void CheckNumber(std::int32_t number, const std::string& database) const;

    // Settles which state holds and writes the file. REQUIRES: CheckNumber accepts `number`.
    void Settle(std::int32_t number);

    // The state that holds; while a command is pending, the one after it.
    const Memoria& State() const { return m_state; }
    // How far the state that holds has come, a pending command aside.
    const CommandProgress& GetProgress() const { return m_progress; }

    // Before COMMIT: `registro` and `progress` are those after the command.
    void WritePending(const Memoria& registro, const CommandProgress& progress);

    // After COMMIT: the state of WritePending holds. Writes nothing, unless the journal has grown:
    // it says so together with the database.
    void Confirm();

    // Writes a state that holds whatever the database carries: what a refused command or a
    // directive left, or a command whose rows were lost.
    void WriteSettled(const Memoria& registro, const CommandProgress& progress);

    // Writes the file, if there is anything in the journal, and removes that. REQUIRES: no command
    // is pending.
    void Fold();

  private:
    // A state, and whether the file tells how far it has come.
    struct Snapshot {
        Memoria registro;
        CommandProgress progress;
    };

    void Parse(const std::string& content);
    void ApplyJournal();
    void WriteRecord(const Memoria& registro, CommandProgress progress, bool pending);
    void WriteFile();

    std::string m_path;
    std::unique_ptr<Storage> m_storage;
    MemoriaJournal m_journal;
    std::size_t m_maxJournalBytes;
    std::string m_digest; // that the file has

    bool m_hasProgress = false;
    bool m_pending = false;
    // As file and journal have it, a pending command included.
    Memoria m_state;
    CommandProgress m_written;
    CommandProgress m_progress; // that holds
    std::optional<Snapshot>
        m_before; // the pending command that was read; empty for one of this run
};

} // namespace bancada
