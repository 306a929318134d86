// What the parts of an import share.
#pragma once

#include "bancada/arquivo/ArquivoLido.h"
#include "bancada/arquivo/Comprovantes.h"
#include "bancada/arquivo/DiasLidos.h"
#include "bancada/arquivo/Importacao.h"
#include "bancada/arquivo/Neutros.h"
#include "bancada/arquivo/TapeText.h"
#include "bancada/arquivo/Tributacao.h"
#include "bancada/leitura/Counter.h"

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace bancada::arquivo
{

// The programming that the register begins with, as far as the file tells it.
struct Programacao {
    std::vector<std::string> meios;   // by number, from 1 at place 0
    std::vector<bool> vinculado;      // the means may have a voucher
    std::vector<std::string> nomesNf; // likewise; the float's and the withdrawal's are 1 and 2
    // Rates by number, hundredths of a percent; several where it was programmed anew.
    std::map<std::int64_t, std::set<std::int64_t>> icms;
    std::map<std::int64_t, std::set<std::int64_t>> issqn;
    std::vector<std::string> especiais; // F1 and so on

    // From 1; 0 for a name that is not there.
    std::int64_t Meio(const std::string& nome) const;
    std::int64_t Totalizador(const std::string& nome) const;
};

// A document that has a number and no record: what became of the last receipt.
struct SemRegistro {
    enum class Kind {
        ESTORNO_PAGAMENTO,
        CANCELAMENTO
    };
    Kind kind = Kind::CANCELAMENTO;
    EstornoLido estorno{};
};

struct Importador {
    Importador(const std::string& path, std::ostream& out)
        : arquivo(path), tape(out), naoDito(arquivo.NaoDito()), dias(arquivo, programacao)
    {
    }
    Importador(const Importador&) = delete;
    Importador& operator=(const Importador&) = delete;

    ArquivoLido arquivo;
    TapeText tape;
    Neutros naoDito; // what the tape cannot say, begun with what the common fields tell
    Fatos fatos;
    Programacao programacao;
    DiasLidos dias;

    // As the register stands behind the last line of the tape.
    std::map<std::string, std::int64_t> contadores; // by name: "ccf"
    std::int64_t registrado = 0;                    // cents that the grand total grew by
    std::int64_t vendaDoDia = 0;                    // those since the last Z reduction
    std::int64_t movimento = 0; // when the first receipt since it was opened; 0: none was
    bool ratear = false;
    Comprovantes comprovantes;         // of the last receipt
    std::deque<SemRegistro> pendentes; // due before the next receipt
    NumerosLivres livres;              // before the next receipt
    std::int64_t proximaHora = 0;      // the first that the file tells from the document at hand on
    std::int64_t crzDoDia = 0;         // of the reduction that will close the day; 0: none
    std::optional<Record> cadastroEm;  // the E09 in which the owner is still to be programmed
    std::map<std::string, std::int64_t> aliquotas; // as programmed: "T1" and so on

    // Moves a counter on by one; its number then.
    std::int64_t Count(const char* counter)
    {
        std::int64_t& number = contadores[counter];
        return number = leitura::NextNumber(number);
    }

    void Note(const std::string& type, const std::string& what) { naoDito.AddMissing(type, what); }
};

// The programming that the file implies.
void FindProgramacao(Importador& importing);
// The lines that program the register, before its first document; the owner's, too, unless he was
// registered in an intervention, which is left to `cadastroEm`.
void WriteProgramacao(Importador& importing);
// The lines that program the owner, at `em`. REQUIRES: the file has an E02.
void WriteUsuario(Importador& importing, std::int64_t em);
// A fiscal or a non-fiscal receipt, up to its end or its cancellation in issue; what comes of it
// later is left pending. `at` is its place in Documentos; `end` is the end that the file tells, 0
// where it does not.
void WriteCupom(Importador& importing, std::size_t at);
void WriteCupomNf(Importador& importing, std::int64_t coo, std::int64_t end);
// Every document's lines, in their order; what was sold on the first day before the file begins, in
// cents.
std::int64_t WriteDocumentos(Importador& importing);
// The memory's content, when the tape is written: the counters as they were before it.
std::string MemoriaInicial(Importador& importing,
                           const std::map<std::string, std::int64_t>& contadores,
                           std::int64_t antes);
// The facts of the small records.
Fatos FindFatos(ArquivoLido& arquivo);

} // namespace bancada::arquivo
