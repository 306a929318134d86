#include "bancada/cli/ShowVerdict.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/conferencia/Emenda.h"
#include "bancada/conferencia/LookedAt.h"

#include <map>

namespace bancada
{
namespace
{

using namespace conferencia;

// So many findings of a kind stand on a page.
constexpr std::int64_t LISTED_OF_A_KIND = 100;

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

std::vector<relatorio::Verdict> ReadVerdicts(const std::deque<leitura::DatabaseReading>& databases,
                                             const Losses* losses)
{
    std::vector<relatorio::Verdict> verdicts;
    std::vector<LookedAt> all;
    for (std::size_t i = 0; i < databases.size(); ++i) {
        relatorio::Verdict& verdict = verdicts.emplace_back();
        const LookedAt& lookedAt = all.emplace_back(ReadLookedAt(databases[i]));
        verdict.size = lookedAt.size;
        verdict.sha256 = lookedAt.sha256;
        verdict.logSize = lookedAt.logSize;
        verdict.logSha256 = lookedAt.logSha256;
        verdict.range =
            lookedAt.IsEmpty() ? Tr("an empty database: it holds no document") : RangeOf(lookedAt);
        Collector collector(verdict);
        const FindingSink sink = [&](const Finding& finding) { collector.Add(finding); };
        try {
            const CheckSummary summary = CheckDatabase(databases[i], losses, sink);
            verdict.faults = summary.faults;
            verdict.explained = summary.explained;
            verdict.notes = summary.notes;
            if (i > 0) {
                verdict.faults +=
                    CheckEmenda(databases[i - 1], all[i - 1], databases[i], lookedAt, sink);
            }
        } catch (const Unusable& unusable) {
            verdict.failure = unusable.what();
        }
    }
    return verdicts;
}

} // namespace bancada
