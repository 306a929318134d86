// ecf-bancada run: executes a tape.
#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Printable.h"
#include "bancada/Unusable.h"
#include "bancada/caixa/TapeLint.h"
#include "bancada/caixa/TapeRun.h"
#include "bancada/cli/FileLock.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/Interruption.h"
#include "bancada/cli/Progress.h"
#include "bancada/cli/RunFiles.h"
#include "bancada/cli/RunSummary.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/UsedFiles.h"
#include "bancada/memoria/MemoriaFile.h"
#include "bancada/memoria/WholeFile.h"
#include "bancada/tape/TapeReader.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace bancada
{
namespace
{

struct RunOptions {
    RunFiles files;
    bool replies = false;
    bool strict = false;
    bool append = false;
    bool lint = false;
};

// A tape, read until it ends or a signal comes.
struct InterruptibleTape {
    InterruptibleTape(const std::string& path, TapeReader::Digest digest)
        : tape(
              path, [this](int file) { return interruption.WaitToRead(file); }, digest)
    {
    }

    Interruption interruption;
    TapeReader tape;
};

std::unique_ptr<FileLock> LockDatabase(const RunFiles& files)
{
    return files.DatabaseIsFile()
               ? std::make_unique<FileLock>(FollowLinks(files.database),
                                            Tr("the database %1", {files.database}))
               : nullptr;
}

std::unique_ptr<FileLock> LockMemory(const RunFiles& files)
{
    if (!files.HasMemory()) {
        return nullptr;
    }
    auto lock =
        std::make_unique<FileLock>(FollowLinks(files.memory), Tr("the memory %1", {files.memory}));
    lock->Require(); // it could not be written either
    return lock;
}

// Reads the memory, if one is kept.
std::unique_ptr<MemoriaFile> OpenMemory(const RunFiles& files)
{
    if (!files.HasMemory()) {
        return nullptr;
    }
    auto memory = std::make_unique<MemoriaFile>(files.memory);
    // Said before the missing database would be made.
    std::error_code none;
    if (!std::filesystem::exists(files.database, none)) {
        memory->CheckNumber(0, files.database);
    }
    return memory;
}

// One run: the assembled register, its tape and its memory, and what is told of it in the end.
class Run
{
  public:
    // `input` is borrowed and outlives this.
    Run(const RunOptions& options, InterruptibleTape& input)
        : m_interruption(input.interruption), m_tape(input.tape),
          m_databaseLock(LockDatabase(options.files)), m_memoryLock(LockMemory(options.files)),
          m_run(m_tape, options.files.database, DatabaseOptions(options),
                OpenMemory(options.files)),
          m_replies(options.replies)
    {
        // Behind the database's own reasons not to be used, which tell more.
        if (m_databaseLock != nullptr) {
            m_databaseLock->Require();
        }
        // Last, so that a database that is refused leaves no log behind.
        m_run.GetCaixa().OpenLog(options.files.log);
        m_continuedBehind = m_run.TakeUp();
        m_lastLine = m_continuedBehind;
    }

    // Runs the tape to its end, or until it is interrupted between two lines. Throws TapeError
    // where it cannot be read further; what came before is logged.
    void ToTheEnd()
    {
        Progress progress(m_tape);
        TapeCommand line;
        try {
            for (std::int64_t commands = 0; Signal() == 0 && m_tape.Next(line); ++commands) {
                Execute(line);
                progress.Show(commands);
            }
        } catch (const TapeError&) {
            m_run.Fold();
            throw;
        }
        m_run.Fold();
    }

    void PrintSummary(std::ostream& out) const
    {
        if (m_continuedBehind > 0) {
            out << Tr("continued behind line %1", {std::to_string(m_continuedBehind)}) << "\n";
        }
        m_summary.Print(out, m_run.GetCaixa().Database().Counts());
        const MemoriaFile* memory = m_run.Memory();
        if (memory != nullptr && memory->GetProgress().lost > m_summary.lost.Count()) {
            out << Tr("commands lost since the memory began: %1; the last: %2",
                      {std::to_string(memory->GetProgress().lost),
                       Printable(memory->GetProgress().lastLoss)})
                << "\n";
        }
        const FirmwareLog& log = m_run.GetCaixa().Log();
        if (log.WriteErrors() > 0) {
            out << Tr("firmware log: %1 of %2 records could not be written",
                      {std::to_string(log.WriteErrors()), std::to_string(log.Records())})
                << "\n";
        }
    }

    bool HasFindings() const { return m_summary.HasFindings(); }
    // Of the tape, behind which nothing was run; 0 before the first.
    int LastLine() const { return m_lastLine; }
    // The signal that ended the run, or 0.
    int Signal() const { return m_interruption.Signal(); }

  private:
    static LogDatabase::Options DatabaseOptions(const RunOptions& options)
    {
        LogDatabase::Options result;
        result.append = options.append;
        return result;
    }

    void Execute(const TapeCommand& line)
    {
        const Answer answer = m_run.Execute(line);
        Note(line, answer);
        m_lastLine = line.place.line;
        if (m_replies) {
            std::cout << line.place.line << " " << Printable(line.name + ": " + Reply(answer))
                      << std::endl;
        }
        m_run.GetCaixa().RestAfter(line);
    }

    static std::string Reply(const Answer& answer)
    {
        switch (answer.fate) {
        case Answer::Fate::REFUSED:
            return Tr("refused: %1", {answer.reason});
        case Answer::Fate::LOST:
            return Tr("executed, rows lost: %1", {TrForeign(answer.reason)});
        case Answer::Fate::CONFIGURED:
        case Answer::Fate::KEPT:
            return Tr("executed");
        }
        return "";
    }

    void Note(const TapeCommand& line, const Answer& answer)
    {
        if (answer.fate == Answer::Fate::REFUSED) {
            m_summary.refused.Add(line.place, line.name, answer.reason);
        }
        if (!answer.Executed()) {
            return;
        }
        ++m_summary.run;
        if (answer.rejected > 0) {
            m_summary.rejected.Add(line.place, line.name,
                                   TrCount("%1 statement", "%1 statements", answer.rejected));
        }
        if (answer.fate == Answer::Fate::LOST) {
            m_summary.lost.Add(line.place, line.name, TrForeign(answer.reason));
        }
    }

    Interruption& m_interruption;
    TapeReader& m_tape;
    // Held until all that they guard is closed; null for what is no file.
    std::unique_ptr<FileLock> m_databaseLock;
    std::unique_ptr<FileLock> m_memoryLock;
    TapeRun m_run;
    RunSummary m_summary;
    int m_continuedBehind = 0;
    int m_lastLine = 0;
    bool m_replies;
};

int EndInterrupted(int signal, const std::string& howFar)
{
    std::cerr << "ecf-bancada: " << Tr("ended by signal %1; %2", {std::to_string(signal), howFar})
              << "\n";
    return EXIT_SIGNAL + signal;
}

// Whether the run would make a database for a tape that has nothing to put there.
bool MakesNothing(const RunFiles& files, TapeReader& tape)
{
    std::error_code none;
    return files.DatabaseIsFile() && !std::filesystem::exists(files.database, none) &&
           tape.IsEmpty();
}

int Lint(const RunOptions& options)
{
    if (options.files.tape != "-") {
        RequireApart("", {{options.files.tape, TrLater("tape")}});
    }
    InterruptibleTape input(options.files.tape, TapeReader::Digest::LEFT_OUT);
    std::int64_t faults = 0;
    const std::int64_t lines = LintTape(input.tape, [&](const TapeError& fault) {
        ++faults;
        std::cout << Printable(fault.what()) << "\n";
    });
    std::cout << TrCount("%1 command", "%1 commands", lines) << ", "
              << TrCount("%1 fault", "%1 faults", faults) << "\n";
    if (const int signal = input.interruption.Signal()) {
        return EndInterrupted(signal, Tr("the tape was not read to its end"));
    }
    return faults > 0 ? EXIT_FINDINGS : EXIT_OK;
}

int RunTape(RunOptions options)
{
    options.files = CheckRunFiles(options.files);
    InterruptibleTape input(options.files.tape, options.files.HasMemory()
                                                    ? TapeReader::Digest::TAKEN
                                                    : TapeReader::Digest::LEFT_OUT);
    if (MakesNothing(options.files, input.tape)) {
        std::cerr << "ecf-bancada: "
                  << Tr("the tape %1 holds no command: no database was made",
                        {Printable(options.files.tape)})
                  << "\n";
        return EXIT_OK;
    }
    Run run(options, input);
    try {
        run.ToTheEnd();
    } catch (...) {
        run.PrintSummary(std::cout);
        throw;
    }
    run.PrintSummary(std::cout);
    if (run.Signal() != 0) {
        return EndInterrupted(run.Signal(),
                              Tr("the tape was not run to its end, but to its line %1",
                                 {std::to_string(run.LastLine())}));
    }
    return options.strict && run.HasFindings() ? EXIT_FINDINGS : EXIT_OK;
}

} // namespace

void AddRun(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<RunOptions>();
    CLI::App* run = app.add_subcommand(
        "run",
        Tr("Execute a command tape on a register, log it into a database and print a summary"));
    run->add_option("TAPE", options->files.tape,
                    Tr("The tape, JSON Lines as docs/tape.md describes; - is "
                       "standard input"))
        ->required();
    CLI::Option* database =
        run->add_option("--db", options->files.database,
                        Tr("The logging database; made if it is missing. Due, but for --lint"))
            ->type_name("FILE");
    CLI::Option* log =
        run->add_option(
               "--log", options->files.log,
               Tr("The firmware log, which gets the rejected statements; records are added to "
                  "one that exists [the database's name with .log]"))
            ->type_name("FILE");
    CLI::Option* memory =
        run->add_option(
               "--memory", options->files.memory,
               Tr("Keep the register's state in this file, and go on from it, behind the part of "
                  "the tape that was carried out before (docs/memory.md); without it the "
                  "register begins as it leaves the factory"))
            ->type_name("FILE");
    CLI::Option* replies = run->add_flag(
        "--replies", options->replies,
        Tr("Print a line for each line of the tape as soon as what it did is durable"));
    CLI::Option* append =
        run->add_flag("--append", options->append, Tr("Add to a database that already holds rows"));
    CLI::Option* strict = run->add_flag(
        "--strict", options->strict,
        Tr("Exit with 1 if a command was refused, a statement rejected or a command's rows "
           "lost"));
    run->add_flag("--lint", options->lint,
                  Tr("Run nothing and make nothing: list all faults of the tape, of its lines, "
                     "commands, fields and times, as file:line:column: message"));
    run->footer(Tr(
        "The summary counts commands and statements, names the commands that were refused, "
        "had statements\nrejected or lost their rows with their line on the tape, and "
        "counts the rows of each table. A database\nthat is locked, read-only, full or "
        "damaged does not stop the run. INT and TERM end it behind the command\nat hand, with "
        "the summary and the line that it came to. A tape without a command makes no database.\n\n"
        "Exit codes: 0 the tape was executed to its end; 1 it was, and --strict found something, or "
        "--lint found\nfaults; 2 the tape cannot be read (the fault is told as "
        "file:line:column: message, everything before it\nstays logged), or another file cannot be "
        "used. A run that INT or TERM ended ends by that signal."));
    SetExamples(
        *run,
        {{"ecf-bancada run dia.jsonl --db loja.db",
          Tr("Run the tape of a day into a database, loja.db, and its firmware log, loja.db.log")},
         {"ecf-bancada run amanha.jsonl --db loja.db --memory loja.memoria --append",
          Tr("Go on with a register that is kept from run to run")},
         {"ecf-bancada run dia.jsonl --lint", Tr("List all faults of a tape and run nothing")}});
    const std::vector<const CLI::Option*> ofRuns = {database, log, memory, replies, append, strict};
    run->callback([options, ofRuns, &exitCode] {
        for (const CLI::Option* option : ofRuns) {
            if (options->lint && *option) {
                throw CLI::ExcludesError("--lint", option->get_name());
            }
        }
        if (!options->lint && !*ofRuns[0]) {
            throw CLI::RequiredError("--db");
        }
        exitCode = options->lint ? Lint(*options) : RunTape(*options);
    });
}

} // namespace bancada
