// The memory file of a register: its state from run to run, in step with the logging database.
#pragma once

#include "bancada/memoria/CommandProgress.h"
#include "bancada/registro/Memoria.h"

#include <cstdint>
#include <string>

namespace bancada
{

// A command is carried out in RAM and its rows wait in an open transaction that also numbers the
// database. Before COMMIT the file gets the state before and after the command (WritePending).
// After a crash the database tells which of the two holds: the one after if it carries the
// command's number, the one before if it does not; the command was then never replied, and is run
// again. docs/memory.md tells the file's form.
//
// Whatever cannot be read or written is thrown as Unusable. After a failed write the register must
// not go on: nobody could tell any more what it has done.
class MemoriaFile
{
  public:
    // Reads the file `path`. One that is missing is a register as it leaves the factory. Throws
    // Unusable for a file that is damaged, is none of these or was written by a newer program; the
    // file stays as it is.
    explicit MemoriaFile(const std::string& path);

    // Whether the file tells how far its commands have come: it then belongs to one database. A
    // file that is missing or was written by hand does not.
    bool HasProgress() const { return m_hasProgress; }

    // Throws Unusable, naming both numbers, if the database `database`, which carries `number`, is
    // not the one that the file belongs to.
    void CheckNumber(std::int32_t number, const std::string& database) const;

    // Settles which state holds and writes the file. REQUIRES: CheckNumber accepts `number`.
    void Settle(std::int32_t number);

    // The state that holds, and how far it has come.
    const Memoria& State() const { return m_current.registro; }
    const CommandProgress& GetProgress() const { return m_current.progress; }

    // Before COMMIT: `registro` and `progress` are those after the command; the state that holds
    // until now goes into the file as the one before.
    void WritePending(const Memoria& registro, const CommandProgress& progress);

    // After COMMIT: the state of WritePending holds. Writes nothing: the file says so together with
    // the database.
    void Confirm();

    // Writes a state that holds whatever the database carries: what a refused command or a
    // directive left, or a command whose rows were lost.
    void WriteSettled(const Memoria& registro, const CommandProgress& progress);

  private:
    struct Snapshot {
        Memoria registro;
        CommandProgress progress;
        // Both as fields of the file.
        std::string progressText;
        std::string registroText;
    };

    void Parse(const std::string& content);
    static void Prepare(Snapshot& snapshot, const Memoria& registro,
                        const CommandProgress& progress);
    // `before` is the field of that name, with its comma, or empty.
    void Write(const std::string& before, const Snapshot& snapshot) const;

    std::string m_path;
    bool m_hasProgress = false;
    bool m_pending = false;
    Snapshot m_current; // that of before while a command is pending
    Snapshot m_after;   // of the pending command
};

} // namespace bancada
