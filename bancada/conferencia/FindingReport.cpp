#include "bancada/conferencia/FindingReport.h"

#include "bancada/Messages.h"
#include "bancada/conferencia/Texts.h"

#include <utility>

namespace bancada::conferencia
{
void FindingReport::Report(FindingKind kind, const std::string& key, const std::string& text,
                           const Subject& subject, const Place& place)
{
    if (m_collects) {
        m_residue.emplace(std::pair(kind, key), text);
        return;
    }
    const bool explained = IsExplained(kind, key, subject);
    const auto residue = m_residue.find({kind, key});
    const bool partly = residue != m_residue.end() && !explained && residue->second != text;
    HandOut({kind, subject, key,
             partly ? Tr("%1; with the lost rows: %2", {text, residue->second}) : text, explained,
             place});
}

bool FindingReport::IsExplained(FindingKind kind, const std::string& key,
                                const Subject& subject) const
{
    if (m_losses == nullptr) {
        return false;
    }
    const bool lost = (subject.coo != 0 && m_losses->HasCoo(subject.coo)) ||
                      (subject.crz != 0 && m_losses->HasCrz(subject.crz));
    const bool vague = m_losses->IsVagueCoo(subject.coo) || m_losses->IsVagueCrz(subject.crz);
    return lost && (vague || m_residue.count({kind, key}) == 0);
}

void FindingReport::ReportExplained(FindingKind kind, const std::string& key,
                                    const std::string& text, bool explained, const Subject& subject,
                                    const Place& place)
{
    if (m_collects) {
        return;
    }
    HandOut({kind, subject, key, text, explained, place});
}

void FindingReport::HandOut(Finding finding)
{
    if (InfoOf(finding.kind).weight == Weight::NOTE) {
        ++m_notes;
    } else {
        ++m_faults;
        m_explained += finding.explained ? 1 : 0;
    }
    for (std::string* text :
         {&finding.key, &finding.text, &finding.place.expected, &finding.place.found}) {
        *text = OneLine(std::move(*text));
    }
    m_sink(finding);
}

} // namespace bancada::conferencia
