#include "bancada/conferencia/Emenda.h"

#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

#include <string>

namespace bancada::conferencia
{
namespace
{

class Seam
{
  public:
    Seam(const LookedAt& before, const LookedAt& after, const FindingSink& sink)
        : m_key(before.file + " to " + after.file), m_sink(sink)
    {
    }

    void Report(const std::string& text, const Place& place)
    {
        ++m_findings;
        m_sink({FindingKind::EMENDA, Subject(), m_key, text, false, place});
    }

    // Numbers of which the next is due, one step behind the last.
    void Follow(const std::string& what, const Place& where, const leitura::Integer& last,
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
        place.expected = std::to_string(last.Value() + 1);
        place.found = Number(next);
        const bool overlaps = steps == 0 || leitura::ComesBefore(next.Value(), last.Value());
        Report(what + (overlaps ? " stands in both: " : " is missing between them: ") +
                   "the first ends at " + Number(last) + ", the next begins at " + Number(next),
               place);
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
        seam.Report("non-fiscal operations do not follow each other: GNF " + Number(last.gnf) +
                        ", then GNF " + Number(next.gnf),
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
        seam.Report("the grand total does not continue: GT " + Money(before.gt) + " and VB " +
                        Money(z.valorVb) + " of " + Crz(z.crz) + " are not GT " + Money(z.valorGt),
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
        seam.Report("another register: serial number " + OneLine(lookedAtBefore.numSerie) +
                        ", then " + OneLine(lookedAtAfter.numSerie),
                    {"dados_ecf", 0, "num_serie", lookedAtBefore.numSerie, lookedAtAfter.numSerie});
    }
    seam.Follow("a document", {"", 0, "cont_coo", "", ""}, lookedAtBefore.ultimoCoo,
                lookedAtAfter.primeiroCoo);
    seam.Follow("a Z reduction", {"reducao_z", 0, "cont_crz", "", ""}, lookedAtBefore.ultimoCrz,
                lookedAtAfter.primeiroCrz);
    CheckGnf(seam, ReadOperation(before, "max"), ReadOperation(after, "min"));
    CheckGt(seam, lookedAtBefore, after);
    if (!lookedAtAfter.IsEmpty() && lookedAtAfter.primeiraHora < lookedAtBefore.ultimaHora) {
        seam.Report("the next begins on " + OneLine(lookedAtAfter.primeiraHora) +
                        ", before the first ends on " + OneLine(lookedAtBefore.ultimaHora),
                    {"", 0, "", lookedAtBefore.ultimaHora, lookedAtAfter.primeiraHora});
    }
    return seam.Findings();
}

} // namespace bancada::conferencia
