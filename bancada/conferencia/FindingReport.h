// Hands out the findings, and counts them.
#pragma once

#include "bancada/conferencia/Finding.h"
#include "bancada/conferencia/LossIndex.h"

namespace bancada::conferencia
{

class FindingReport
{
  public:
    // `losses` is null when no firmware log was given. Both outlive this object.
    FindingReport(const LossIndex* losses, const FindingSink& sink) : m_losses(losses), m_sink(sink)
    {
    }

    // A finding that a loss of the same document or day explains. Key and text may hold anything
    // that a row or the log holds: they are made one line.
    void Report(FindingKind kind, const std::string& key, const std::string& text,
                const Subject& subject, const Place& place = {});
    // A finding of which the caller knows whether a loss explains it.
    void ReportExplained(FindingKind kind, const std::string& key, const std::string& text,
                         bool explained, const Subject& subject = {}, const Place& place = {});

    std::int64_t Faults() const { return m_faults; }
    // Those of the faults that are explained.
    std::int64_t Explained() const { return m_explained; }
    std::int64_t Notes() const { return m_notes; }

  private:
    void HandOut(Finding finding);

    const LossIndex* m_losses;
    const FindingSink& m_sink;
    std::int64_t m_faults = 0;
    std::int64_t m_explained = 0;
    std::int64_t m_notes = 0;
};

} // namespace bancada::conferencia
