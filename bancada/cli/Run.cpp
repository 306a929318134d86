// ecf-bancada run: executes a tape.
#include "bancada/Unusable.h"
#include "bancada/banco/LogDatabase.h"
#include "bancada/cli/Configura.h"
#include "bancada/cli/Progress.h"
#include "bancada/cli/RunSummary.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/comandos/Catalogo.h"
#include "bancada/comandos/Executor.h"
#include "bancada/fita/TapeClock.h"
#include "bancada/fita/TapeFields.h"
#include "bancada/fita/TapeReader.h"
#include "bancada/log/FirmwareDuty.h"
#include "bancada/log/FirmwareLog.h"
#include "bancada/registro/Registro.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

namespace bancada
{
namespace
{

struct RunOptions {
    std::string tape;
    std::string database;
    std::string log;
    bool strict = false;
    bool append = false;
};

// The log and the database grow while the tape is read: none of them may be another one.
void RequireDistinct(const RunOptions& options)
{
    const std::string* paths[] = {&options.tape, &options.database, &options.log};
    for (const std::string* one : paths) {
        for (const std::string* other : paths) {
            std::error_code none;
            if (one != other && (*one == *other || std::filesystem::equivalent(*one, *other, none)))
                throw Unusable(*one + " cannot be two of tape, database and firmware log");
        }
    }
}

// One run: the register, what surrounds it, and what is told of it in the end.
class Run
{
  public:
    explicit Run(const RunOptions& options)
        : m_tape(options.tape), m_duty(m_log, [this] { return m_registro.GetRatearSubtotal(); }),
          m_database(options.database, m_log, DatabaseOptions(options)),
          m_executor(m_registro, m_database)
    {
        // Last, so that a database that is refused leaves no log behind.
        m_log.Open(options.log);
    }

    // Runs the tape to its end. Throws TapeError where it cannot be read further; what came before
    // is logged.
    void ToTheEnd()
    {
        Progress progress(m_tape);
        TapeCommand line;
        for (std::int64_t commands = 0; m_tape.Next(line); ++commands) {
            Execute(line);
            progress.Show(commands);
        }
    }

    void PrintSummary(std::ostream& out) const
    {
        m_summary.Print(out, m_database.Counts());
        if (m_log.WriteErrors() > 0)
            out << "firmware log: " << m_log.WriteErrors() << " of " << m_log.Records()
                << " records could not be written\n";
    }

    bool HasFindings() const { return m_summary.HasFindings(); }

  private:
    static LogDatabase::Options DatabaseOptions(const RunOptions& options)
    {
        LogDatabase::Options result;
        result.append = options.append;
        return result;
    }

    void Execute(const TapeCommand& line)
    {
        if (line.name == CONFIGURA) {
            ExecutaConfigura(line, m_registro);
            return;
        }
        const ItemCatalogo* item = ProcuraComando(line.name);
        if (item == nullptr)
            throw TapeError(line.namePlace, "there is no command \"" + line.name + "\"");
        const std::unique_ptr<ComandoBancada> command = item->cria(m_registro);
        TapeFields fields(line);
        command->Campos(fields);
        fields.Finish();

        const RtcAbsoluteTime em = m_clock.Next(line);
        m_log.SetTime(em);
        const std::int64_t rejectedBefore = m_database.Counts().statementsRejected;
        const Resultado result = m_executor.Executa(*command, em);
        Note(line, result, m_database.Counts().statementsRejected - rejectedBefore);
    }

    void Note(const TapeCommand& line, const Resultado& result, std::int64_t rejected)
    {
        if (!result.executado) {
            m_summary.refused.Add(line.place, line.name, result.recusa.value_or("refused"));
            return;
        }
        ++m_summary.run;
        if (rejected > 0)
            m_summary.rejected.Add(line.place, line.name,
                                   std::to_string(rejected) +
                                       (rejected == 1 ? " statement" : " statements"));
        if (!result.registrado)
            m_summary.lost.Add(line.place, line.name, m_database.LastLoss());
    }

    TapeReader m_tape;
    TapeClock m_clock;
    Registro m_registro;
    FirmwareLog m_log;
    FirmwareDuty m_duty;
    LogDatabase m_database;
    Executor m_executor;
    RunSummary m_summary;
};

int RunTape(RunOptions options)
{
    if (options.log.empty())
        options.log = options.database + ".log";
    RequireDistinct(options);

    Run run(options);
    try {
        run.ToTheEnd();
    } catch (...) {
        run.PrintSummary(std::cout);
        throw;
    }
    run.PrintSummary(std::cout);
    return options.strict && run.HasFindings() ? EXIT_FINDINGS : EXIT_OK;
}

} // namespace

void AddRun(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<RunOptions>();
    CLI::App* run = app.add_subcommand(
        "run", "Execute a command tape on a register with an empty memory, log it into a database "
               "and print a summary");
    run->add_option("TAPE", options->tape,
                    "The tape, JSON Lines as docs/tape.md describes; - is "
                    "standard input")
        ->required();
    run->add_option("--db", options->database, "The logging database; made if it is missing")
        ->required()
        ->type_name("FILE");
    run->add_option("--log", options->log,
                    "The firmware log, which gets the rejected statements; records are added to "
                    "one that exists [the database's name with .log]")
        ->type_name("FILE");
    run->add_flag("--append", options->append, "Add to a database that already holds rows");
    run->add_flag("--strict", options->strict,
                  "Exit with 1 if a command was refused, a statement rejected or a command's rows "
                  "lost");
    run->footer("The summary counts commands and statements, names the commands that were refused, "
                "had statements\nrejected or lost their rows with their line on the tape, and "
                "counts the rows of each table. A database\nthat is locked, read-only, full or "
                "damaged does not stop the run.\n\nExit codes: 0 the tape was executed to its end; "
                "1 it was, and --strict found something; 2 the tape\ncannot be read (the fault is "
                "told as file:line:column: message, everything before it stays logged), or\n"
                "another file cannot be used.");
    run->callback([options, &exitCode] { exitCode = RunTape(*options); });
}

} // namespace bancada
