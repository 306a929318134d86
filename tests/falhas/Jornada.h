// A short day at a register, run again and again under faults, and what must hold after each run.
#pragma once

#include "bancada/caixa/Caixa.h"
#include "bancada/log/FirmwareDuty.h"
#include "bancada/tape/TapeCommand.h"
#include "tests/falhas/Leitura.h"
#include "tests/falhas/SimulatedDisk.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct sqlite3;

namespace falhas
{

// The lines of a tape, parsed once. REQUIRES: each is a command of the catalogue.
std::vector<bancada::TapeCommand> ParseTape(const std::vector<std::string>& lines);

// Programming with refused and repeated rows, a receipt with an adjusted item and an apportioned
// subtotal, a withdrawal, a reprint and a Z: every logger that works in several statements. With
// ECF_FALHAS=longa in the environment, three such days.
const std::vector<bancada::TapeCommand>& Fita();

// Whether that was asked for.
bool IsLong();

// 1, or k with ECF_FALHAS_PASSO=k in the environment: each k-th call alone is tried, for builds
// that are slow.
int Step();

// One register that logs on `disk`.
class Bancada
{
  public:
    // Throws bancada::Unusable as LogDatabase does.
    Bancada(const SimulatedDisk& disk, const std::string& logPath, bool append = false,
            int pageSize = 0);

    // Executes the command on the register; the answer is LogDatabase's about its rows. Fails the
    // test if the register refuses it.
    bool Executa(const bancada::TapeCommand& linha);
    // The same, and after a Z the device rests.
    bool Roda(const bancada::TapeCommand& linha);
    // The same, with the rows going to the database of `outra`.
    bool Roda(const bancada::TapeCommand& linha, Bancada& outra);

    // The register's counters and totals.
    std::string Retrato() const;

    sqlite3* Handle() { return banco.Handle(); }

    bancada::Caixa caixa;
    bancada::Registro& registro = caixa.GetRegistro();
    bancada::LogDatabase& banco = caixa.Database();
    // For the loggers that a test calls itself.
    bancada::FirmwareDuty plantao{caixa.Log(), [this] { return registro.GetRatearSubtotal(); }};

  private:
    UINT32 m_agora = 1709539200; // 2024-03-04 08:00:00
};

// What the database holds, and what the register is, after the tape's first `quantos` commands when
// the rows of those that `perdidos` names are lost. Made by a run without faults.
struct Esperado {
    std::string linhas;
    std::string retrato;
};
const Esperado& SemFalhas(std::size_t quantos, const std::vector<bool>& perdidos);

// A name for a scratch file of this process, removed with the object.
class ScratchFile
{
  public:
    ScratchFile();
    ~ScratchFile();
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& Path() const { return m_path; }
    void Empty() const;

  private:
    std::string m_path;
};

// Runs the tape on `disk` while `arm` and what it has set up lets calls fail, closes, calls
// `disarm`, and checks everything that a caller may rely on. Answers the number of lost commands.
int RodaComFalhas(SimulatedDisk& disk, const std::function<void()>& disarm,
                  const std::string& circumstances);

} // namespace falhas
