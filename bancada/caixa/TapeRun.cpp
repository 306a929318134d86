#include "bancada/caixa/TapeRun.h"

#include <utility>

namespace bancada
{

TapeRun::TapeRun(TapeReader& tape, const std::string& database, LogDatabase::Options options,
                 std::unique_ptr<MemoriaFile> memory)
    : m_tape(tape), m_memory(std::move(memory)),
      m_caixa(database, WithMemory(std::move(options), m_memory.get(), database))
{
}

LogDatabase::Options TapeRun::WithMemory(LogDatabase::Options options, const MemoriaFile* memory,
                                         const std::string& database)
{
    if (memory != nullptr) {
        options.append = options.append || memory->HasProgress();
        options.accept = [memory, database](std::int32_t number) {
            memory->CheckNumber(number, database);
        };
    }
    return options;
}

int TapeRun::TakeUp()
{
    if (m_memory == nullptr) {
        return 0;
    }
    m_memory->Settle(m_caixa.Database().CommandNumber());
    const CommandProgress& progress = m_memory->GetProgress();
    m_caixa.GetRegistro() = Registro(m_memory->State());
    m_caixa.SetBeforeCommit([this] { KeepPending(); });
    if (!m_tape.Continue(progress.tape)) {
        return 0;
    }
    m_clock.Continue(progress.clock);
    return progress.tape.line;
}

Answer TapeRun::Execute(const TapeCommand& line)
{
    Answer answer = m_caixa.Run(line, m_clock);
    if (m_memory != nullptr) {
        Keep(line, answer);
    }
    return answer;
}

void TapeRun::Fold()
{
    if (m_memory != nullptr) {
        m_memory->Fold();
    }
}

// How far the run is behind the line at hand.
CommandProgress TapeRun::Progressed() const
{
    CommandProgress after = m_memory->GetProgress();
    after.tape = m_tape.Position();
    after.clock = m_clock.Last();
    return after;
}

void TapeRun::KeepPending()
{
    CommandProgress after = Progressed();
    ++after.sequence;
    m_caixa.Database().NumberCommand(after.sequence);
    m_memory->WritePending(m_caixa.GetRegistro().GetMemoria(), after);
}

// Makes the memory say what became of the line, before its reply.
void TapeRun::Keep(const TapeCommand& line, const Answer& answer)
{
    const std::int32_t sequence = m_memory->GetProgress().sequence + 1;
    if (answer.Executed() && m_caixa.Database().CommandNumber() == sequence) {
        m_memory->Confirm();
        return;
    }
    CommandProgress after = Progressed();
    if (answer.Executed()) {
        // The database does not have it, so that it would be run again.
        after.sequence = sequence;
        if (answer.fate == Answer::Fate::LOST) {
            ++after.lost;
            after.lastLoss =
                "line " + std::to_string(line.place.line) + ", " + line.name + ": " + answer.reason;
        }
    }
    m_memory->WriteSettled(m_caixa.GetRegistro().GetMemoria(), after);
}

} // namespace bancada
