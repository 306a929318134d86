#include "bancada/conferencia/Emenda.h"

#include "bancada/Messages.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

#include <string>

namespace bancada::conferencia
{
namespace
{

// What is said of numbers that do not follow each other, for Tr.
struct SeamTexts {
    const char* overlaps;
    const char* missing;
};

constexpr SeamTexts DOCUMENTS = {
    TrLater("a document stands in both: the first ends at %1, the next begins at %2"),
    TrLater("a document is missing between them: the first ends at %1, the next begins at %2")};
constexpr SeamTexts REDUCTIONS = {
    TrLater("a Z reduction stands in both: the first ends at %1, the next begins at %2"),
    TrLater("a Z reduction is missing between them: the first ends at %1, the next begins at %2")};

class Seam
{
  public:
    Seam(const LookedAt& before, const LookedAt& after, const FindingSink& sink)
        : m_key(Tr("%1 to %2", {before.file, after.file})), m_sink(sink)
    {
    }

    void Report(const std::string& text, const Place& place)
    {
        ++m_findings;
        m_sink({FindingKind::EMENDA, Subject(), m_key, text, false, place});
    }

    // Numbers of which the next is due, one step behind the last.
    void Follow(const SeamTexts& texts, const Place& where, const leitura::Integer& last,
                const leitura::Integer& next)
    {
        if (!last.IsKnown() || !next.IsKnown()) {
            return;
        }
        const std::int64_t steps = leitura::Steps(last.Value(), next.Value());
        if (steps == 1) {
            return;
        }
        Place place = where;
        place.expected = std::to_string(leitura::NextNumber(last.Value()));
        place.found = Number(next);
        const bool overlaps = steps == 0 || leitura::ComesBefore(next.Value(), last.Value());
        Report(Tr(overlaps ? texts.overlaps : texts.missing, {Number(last), Number(next)}), place);
    }

    std::int64_t Findings() const { return m_findings; }

  private:
    std::string m_key;
    const FindingSink& m_sink;
    std::int64_t m_findings = 0;
};

struct Operation {
    leitura::Integer coo{leitura::CellState::NULL_VALUE, "none"};
    leitura::Integer gnf{leitura::CellState::NULL_VALUE, "none"};
};

// The first or the last document that has the number of the non-fiscal operations.
Operation ReadOperation(const leitura::DatabaseReading& database, const char* which)
{
    leitura::Query query(database, std::string("SELECT cont_coo AS coo, cont_gnf AS gnf FROM"
                                               " outros_documentos WHERE rowid = (SELECT ") +
                                       which + "(rowid) FROM outros_documentos)");
    Operation operation;
    if (query.Next()) {
        operation = {query.ReadInteger("coo"), query.ReadInteger("gnf")};
    }
    return operation;
}

// Each operation is a document; some have no row (a reversal), others count none (a reading).
void CheckGnf(Seam& seam, const Operation& last, const Operation& next)
{
    if (!last.coo.IsKnown() || !last.gnf.IsKnown() || !next.coo.IsKnown() || !next.gnf.IsKnown()) {
        return;
    }
    if (leitura::Steps(last.gnf.Value(), next.gnf.Value()) >
        leitura::Steps(last.coo.Value(), next.coo.Value())) {
        seam.Report(Tr("non-fiscal operations do not follow each other: GNF %1, then GNF %2",
                       {Number(last.gnf), Number(next.gnf)}),
                    {"outros_documentos", 0, "cont_gnf", Number(last.gnf), Number(next.gnf)});
    }
}

// The next Z's grand total is the last one's and the gross sales of its own day.
void CheckGt(Seam& seam, const LookedAt& before, const leitura::DatabaseReading& after)
{
    leitura::Rows<leitura::ReducaoZRow> rows(after, leitura::ReducaoZTable(),
                                             "ORDER BY rowid LIMIT 1");
    leitura::ReducaoZRow z;
    if (!before.ultimoCrz.IsKnown() || !before.gt.IsKnown() || !rows.Next(z) ||
        !z.valorGt.IsKnown() || !z.valorVb.IsKnown()) {
        return;
    }
    const leitura::Amount due = before.gt + z.valorVb;
    if (!IsSame(due, z.valorGt)) {
        seam.Report(Tr("the grand total does not continue: GT %1 and VB %2 of %3 are not GT %4",
                       {Money(before.gt), Money(z.valorVb), Crz(z.crz), Money(z.valorGt)}),
                    {"reducao_z", z.rowid, "valor_gt", Money(due), Money(z.valorGt)});
    }
}

} // namespace

std::int64_t CheckEmenda(const leitura::DatabaseReading& before, const LookedAt& lookedAtBefore,
                         const leitura::DatabaseReading& after, const LookedAt& lookedAtAfter,
                         const FindingSink& sink)
{
    Seam seam(lookedAtBefore, lookedAtAfter, sink);
    // A database that was begun anew has the serial number when it is programmed again.
    if (!lookedAtBefore.numSerie.empty() && !lookedAtAfter.numSerie.empty() &&
        lookedAtBefore.numSerie != lookedAtAfter.numSerie) {
        seam.Report(Tr("another register: serial number %1, then %2",
                       {OneLine(lookedAtBefore.numSerie), OneLine(lookedAtAfter.numSerie)}),
                    {"dados_ecf", 0, "num_serie", lookedAtBefore.numSerie, lookedAtAfter.numSerie});
    }
    seam.Follow(DOCUMENTS, {"", 0, "cont_coo", "", ""}, lookedAtBefore.ultimoCoo,
                lookedAtAfter.primeiroCoo);
    seam.Follow(REDUCTIONS, {"reducao_z", 0, "cont_crz", "", ""}, lookedAtBefore.ultimoCrz,
                lookedAtAfter.primeiroCrz);
    CheckGnf(seam, ReadOperation(before, "max"), ReadOperation(after, "min"));
    CheckGt(seam, lookedAtBefore, after);
    if (!lookedAtAfter.IsEmpty() && lookedAtAfter.primeiraHora < lookedAtBefore.ultimaHora) {
        seam.Report(Tr("the next begins on %1, before the first ends on %2",
                       {OneLine(lookedAtAfter.primeiraHora), OneLine(lookedAtBefore.ultimaHora)}),
                    {"", 0, "", lookedAtBefore.ultimaHora, lookedAtAfter.primeiraHora});
    }
    return seam.Findings();
}

} // namespace bancada::conferencia
