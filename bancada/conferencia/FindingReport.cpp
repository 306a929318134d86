#include "bancada/conferencia/FindingReport.h"

#include "bancada/conferencia/Texts.h"

#include <utility>

namespace bancada::conferencia
{
void FindingReport::Report(FindingKind kind, const std::string& key, const std::string& text,
                           const Subject& subject, const Place& place)
{
    const bool explained =
        m_losses != nullptr && ((subject.coo != 0 && m_losses->HasCoo(subject.coo)) ||
                                (subject.crz != 0 && m_losses->HasCrz(subject.crz)));
    HandOut({kind, subject, key, text, explained, place});
}

void FindingReport::ReportExplained(FindingKind kind, const std::string& key,
                                    const std::string& text, bool explained, const Subject& subject,
                                    const Place& place)
{
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
