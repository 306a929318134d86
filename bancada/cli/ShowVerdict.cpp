#include "bancada/cli/ShowVerdict.h"

#include "bancada/Unusable.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/conferencia/LookedAt.h"
#include "bancada/conferencia/Texts.h"

#include <map>

namespace bancada
{
namespace
{

using namespace conferencia;

// So many findings of a kind stand on a page.
constexpr std::int64_t LISTED_OF_A_KIND = 100;

std::string RangeOf(const LookedAt& lookedAt)
{
    if (lookedAt.IsEmpty()) {
        return "an empty database: it holds no document";
    }
    return Coo(lookedAt.primeiroCoo) + " of " + lookedAt.primeiraHora + " to " +
           Coo(lookedAt.ultimoCoo) + " of " + lookedAt.ultimaHora + ", " +
           Crz(lookedAt.primeiroCrz) + " to " + Crz(lookedAt.ultimoCrz);
}

class Collector
{
  public:
    explicit Collector(relatorio::Verdict& verdict) : m_verdict(verdict) {}

    void Add(const Finding& finding)
    {
        const FindingKindInfo& info = InfoOf(finding.kind);
        const bool note = info.weight == Weight::NOTE;
        if (!note && finding.subject.coo != 0) {
            ++m_verdict.byCoo[finding.subject.coo];
        }
        if (!note && finding.subject.crz != 0) {
            ++m_verdict.byCrz[finding.subject.crz];
        }
        if (++m_counts[finding.kind] <= LISTED_OF_A_KIND) {
            m_verdict.findings.push_back(
                {info.name, finding.key, finding.text, note, finding.explained});
        }
    }

  private:
    relatorio::Verdict& m_verdict;
    std::map<FindingKind, std::int64_t> m_counts;
};

} // namespace

relatorio::Verdict ReadVerdict(const leitura::DatabaseReading& database, const Losses* losses)
{
    relatorio::Verdict verdict;
    const LookedAt lookedAt = ReadLookedAt(database);
    verdict.size = lookedAt.size;
    verdict.sha256 = lookedAt.sha256;
    verdict.logSize = lookedAt.logSize;
    verdict.logSha256 = lookedAt.logSha256;
    verdict.range = RangeOf(lookedAt);
    Collector collector(verdict);
    try {
        const CheckSummary summary = CheckDatabase(
            database, losses, [&](const Finding& finding) { collector.Add(finding); });
        verdict.faults = summary.faults;
        verdict.explained = summary.explained;
        verdict.notes = summary.notes;
    } catch (const Unusable& unusable) {
        verdict.failure = unusable.what();
    }
    return verdict;
}

} // namespace bancada
