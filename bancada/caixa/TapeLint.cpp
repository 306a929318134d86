#include "bancada/caixa/TapeLint.h"

#include "bancada/comandos/AcertaRelogio.h"
#include "bancada/comandos/CancelaAberto.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/comandos/Configura.h"
#include "bancada/registro/Registro.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeFields.h"
#include "bancada/tape/TapeReader.h"

namespace bancada
{
namespace
{

class Lint
{
  public:
    explicit Lint(const FaultSink& sink) : m_sink(sink) {}

    FaultSink Counting()
    {
        return [this](const TapeError& fault) {
            m_begun = true; // the time of a faulty line is not known: what follows needs none
            m_sink(fault);
        };
    }

    void Line(const TapeCommand& line)
    {
        const FaultSink sink = Counting();
        if (line.name == CONFIGURA) {
            Configura settings(m_registro);
            ReadConfigura(line, settings, sink);
        } else if (line.name == ACERTA_RELOGIO) {
            ReadAcertaRelogio(line, sink);
            m_clock.Continue(line.em.value_or(m_clock.Last()));
        } else if (line.name == CANCELA_ABERTO) {
            TapeFields(line, sink).Finish();
            if (line.em) {
                Advance(line); // without it the line may take no time
            }
        } else if (!line.name.empty()) {
            static_cast<void>(ReadComando(line, m_registro, sink));
            Advance(line);
        }
    }

  private:
    void Advance(const TapeCommand& line)
    {
        const bool begins = !line.em && m_clock.Last().s == matlong[0];
        if (begins && m_begun) {
            return;
        }
        m_begun = true;
        try {
            static_cast<void>(m_clock.Next(line));
        } catch (const TapeError& fault) {
            m_sink(fault);
        }
    }

    const FaultSink& m_sink;
    Registro m_registro; // from which nothing is asked but its commands
    TapeClock m_clock;
    bool m_begun = false;
};

} // namespace

std::int64_t LintTape(TapeReader& tape, const FaultSink& sink)
{
    Lint lint(sink);
    std::int64_t lines = 0;
    for (TapeCommand line; tape.Next(line, lint.Counting()); ++lines) {
        lint.Line(line);
    }
    return lines;
}

} // namespace bancada
