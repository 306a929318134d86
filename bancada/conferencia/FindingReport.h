// Hands out the findings, and counts them.
#pragma once

#include "bancada/conferencia/Finding.h"
#include "bancada/conferencia/LossIndex.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

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

    // What is reported within is not handed out: it is what the lost rows do not account for, and
    // is not explained when it is found without them. Until the next call.
    template <typename Check>
    void FindResidue(const Check& check)
    {
        m_residue.clear();
        m_collects = true;
        check();
        m_collects = false;
    }
    void ForgetResidue() { m_residue.clear(); }

    std::int64_t Faults() const { return m_faults; }
    // Those of the faults that are explained.
    std::int64_t Explained() const { return m_explained; }
    std::int64_t Notes() const { return m_notes; }

  private:
    void HandOut(Finding finding);
    bool IsExplained(FindingKind kind, const std::string& key, const Subject& subject) const;

    const LossIndex* m_losses;
    const FindingSink& m_sink;
    // By kind and key, with its text.
    std::map<std::pair<FindingKind, std::string>, std::string> m_residue;
    bool m_collects = false;
    std::int64_t m_faults = 0;
    std::int64_t m_explained = 0;
    std::int64_t m_notes = 0;
};

} // namespace bancada::conferencia
