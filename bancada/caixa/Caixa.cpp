#include "bancada/caixa/Caixa.h"

#include "bancada/comandos/AcertaRelogio.h"
#include "bancada/comandos/CancelaAberto.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/comandos/Configura.h"
#include "bancada/log/FirmwareDuty.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeFields.h"

namespace bancada
{
namespace
{

constexpr char ENDS_DAY[] = "reducao_z";

} // namespace

Caixa::Caixa(const std::string& database, const LogDatabase::Options& options,
             const Memoria& memoria)
    : m_registro(memoria), m_database(database, m_log, options), m_executor(m_registro, m_database)
{
}

Answer Caixa::Run(const TapeCommand& line, TapeClock& clock)
{
    if (line.name == CONFIGURA) {
        ExecuteConfigura(line, m_registro);
        return {Answer::Fate::CONFIGURED, "", 0};
    }
    if (line.name == ACERTA_RELOGIO) {
        return RunAcertaRelogio(line, clock);
    }
    if (line.name == CANCELA_ABERTO) {
        return RunCancelaAberto(line, clock);
    }
    const std::unique_ptr<ComandoBancada> command = Read(line);
    const RtcAbsoluteTime em = clock.Next(line);
    return Execute(*command, em, line.fim.value_or(RtcAbsoluteTime(matlong[0])));
}

Answer Caixa::RunAcertaRelogio(const TapeCommand& line, TapeClock& clock)
{
    if (const Refusal refusal = ExecuteAcertaRelogio(line, m_registro)) {
        return {Answer::Fate::REFUSED, *refusal, 0};
    }
    clock.Continue(*line.em);
    return {Answer::Fate::CONFIGURED, "", 0};
}

Answer Caixa::RunCancelaAberto(const TapeCommand& line, TapeClock& clock)
{
    TapeFields(line).Finish();
    const CatalogueEntry* entry = FindCancelamento(m_registro);
    if (entry == nullptr) {
        if (line.em) {
            static_cast<void>(clock.Next(line)); // the lines behind it count from there
        }
        return {Answer::Fate::CONFIGURED, "", 0};
    }
    const std::unique_ptr<ComandoBancada> command = entry->make(m_registro);
    const RtcAbsoluteTime em = clock.Next(line);
    return Execute(*command, em, line.fim.value_or(RtcAbsoluteTime(matlong[0])));
}

std::unique_ptr<ComandoBancada> Caixa::Read(const TapeCommand& line)
{
    return ReadComando(line, m_registro);
}

Answer Caixa::Execute(ComandoBancada& command, RtcAbsoluteTime em, RtcAbsoluteTime fim)
{
    const FirmwareDuty duty(m_log, [this] { return m_registro.GetRatearSubtotal(); });
    m_log.SetTime(em);
    const std::int64_t rejectedBefore = m_database.Counts().statementsRejected;
    const Outcome outcome = m_executor.Execute(command, em, fim);

    Answer answer;
    answer.rejected = m_database.Counts().statementsRejected - rejectedBefore;
    if (!outcome.executed) {
        answer.reason = outcome.refusal.value_or("refused");
    } else if (!outcome.kept) {
        answer.fate = Answer::Fate::LOST;
        answer.reason = m_database.LastLoss();
    } else {
        answer.fate = Answer::Fate::KEPT;
    }
    return answer;
}

void Caixa::RestAfter(const TapeCommand& line)
{
    if (line.name == ENDS_DAY) {
        m_database.Rest();
    }
}

} // namespace bancada
