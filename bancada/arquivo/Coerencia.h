// What records tell otherwise than the replay will have it: it is listed, as no tape can say it.
#pragma once

#include "bancada/arquivo/CupomLido.h"

#include <cstdint>
#include <string>

namespace bancada::arquivo
{

struct Importador;

// What the E16 of a document has where the register prints it: its kind, and the counters that it
// moves.
struct OutroNumeros {
    std::string simbolo;
    std::int64_t gnf = 0, grg = 0, cdc = 0, crz = 0;
};

// E01 and E02, with the counters as they are before the first document.
void HoldCadastro(Importador& importing);
// E09, of the mode entered at `em`, as soon as the restart has moved its counter.
void HoldIntervencao(Importador& importing, const Record& intervencao, std::int64_t em);
// E10, of the reprint `cfd` made at `em`.
void HoldFita(Importador& importing, const Record& fita, std::int64_t cfd, std::int64_t em);
// E11, with the counters as the last document left them.
void HoldContadores(Importador& importing);
// E12, with its counters as the reduction moved them.
void HoldReducao(Importador& importing, const Record& reducao);
// E16.
void HoldOutro(Importador& importing, const Record& record, const OutroNumeros& due);
// A receipt of either kind with its items and payments, whose counter has the receipt's number;
// opened at `em`.
void HoldCupom(Importador& importing, const CupomLido& cupom, std::int64_t em);
// A float or a withdrawal, which has one item and no adjustment; a float one payment at most.
void HoldCaixa(Importador& importing, const CupomLido& cupom, bool fundoTroco);

} // namespace bancada::arquivo
