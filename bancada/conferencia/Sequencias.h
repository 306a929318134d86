// The counters of the documents, one class each: what the next document's number must be.
#pragma once

#include "bancada/conferencia/CheckContext.h"
#include "bancada/conferencia/DocumentStream.h"
#include "bancada/conferencia/Expectation.h"
#include "bancada/conferencia/Gaps.h"
#include "bancada/conferencia/Reimpressoes.h"

#include <cstdint>
#include <optional>
#include <string>

namespace bancada::conferencia
{

// Where a document has the column, and what was looked for there.
inline Place PlaceIn(const Documento& documento, const char* column, const std::string& expected,
                     const std::string& found)
{
    return {documento.table, documento.rowid, column, expected, found};
}

// Every document takes the next COO. Numbers without a row that neither a reprint nor a
// cancellation explains become gaps, which the other counters may explain.
class CooSequence
{
  public:
    CooSequence(CheckContext& context, Gaps& gaps);

    void Check(const Documento& documento);
    // What the documents behind this one may take without leaving a row. Called when the
    // document's other counters were checked.
    void Follow(const Documento& documento);
    // Reports numbers that nothing explained, but the one that a cancellation took.
    void ReportMissing(Gap gap);

    // The number taken last; nothing before the first document.
    const std::optional<std::int64_t>& Last() const { return m_last; }

  private:
    CheckContext& m_context;
    Gaps& m_gaps;
    Reimpressoes m_reimpressoes;
    std::optional<std::int64_t> m_last;
    void ReportCancelamento();

    // A closed receipt was cancelled and its cancellation document is still to come.
    bool m_awaitsCancelamento = false;
    // No number came behind it that would be its own.
    bool m_keepsNumber = false;
    Documento m_cancelado;
    // How many there were, and which of them a number was found for last.
    std::int64_t m_cancelados = 0;
    std::int64_t m_lastCancelado = 0;
    // Numbers without a row came behind it: one of them may be the cancellation.
    bool m_mayBeThere = false;
    // Vouchers of the receipt issued last that may still be reversed.
    std::int64_t m_comprovantes = 0;
};

// Every fiscal receipt takes the next CCF.
class CcfSequence
{
  public:
    CcfSequence(CheckContext& context, Gaps& gaps) : m_context(context), m_gaps(gaps) {}

    void Check(const Documento& documento);

  private:
    void ReportMissing(const Documento& documento, std::int64_t count);

    CheckContext& m_context;
    Gaps& m_gaps;
    std::optional<std::int64_t> m_last;
};

// Every non-fiscal document takes the next GNF; readings and Z reductions show the last one.
class GnfSequence
{
  public:
    GnfSequence(CheckContext& context, Gaps& gaps) : m_context(context), m_gaps(gaps) {}

    void Check(const Documento& documento);
    // Behind the last document: no later GNF tells what took the numbers of a gap. Explains the
    // first gap or one number of it, and answers whether it could.
    bool ExplainAtEnd();

  private:
    std::optional<std::int64_t> BeforeEstornos(std::int64_t gnf, std::int64_t own) const;
    void CheckAbsent(const Documento& documento, std::int64_t count);
    bool IsExplained(std::int64_t first, std::int64_t count) const;

    CheckContext& m_context;
    Gaps& m_gaps;
    std::optional<std::int64_t> m_last;
};

// Documents other than fiscal receipts are filed under the last Z made; before the first, under 1.
// Fiscal receipts are filed under the Z to come.
class CrzSequence
{
  public:
    explicit CrzSequence(CheckContext& context) : m_context(context) {}

    void Check(const Documento& documento);
    void CheckFiscal(const Documento& documento);

  private:
    CheckContext& m_context;
    std::optional<leitura::Integer> m_last;
    // Under which the receipts of the day are filed.
    Expectation m_receipts;
};

// A counter that every document shows and that documents of one kind take: vouchers, reports.
struct Counted {
    const char* tipo;
    const char* label;
    const char* column;
    leitura::Integer Documento::*number;
};
constexpr Counted COUNTED_CDC = {"CC", "CDC", "cont_cdc", &Documento::cdc};
constexpr Counted COUNTED_GRG = {"RG", "GRG", "cont_grg", &Documento::grg};

class ComprovanteSequence
{
  public:
    ComprovanteSequence(CheckContext& context, const Counted& counted);

    void Check(const Documento& documento);

  private:
    CheckContext& m_context;
    const Counted& m_counted;
    Expectation m_expected;
    std::optional<std::int64_t> m_lastCoo;
    // Numbers without a row came since the document checked last.
    bool m_gap = false;
};

// No document begins before the one before it began, or ended.
class HoraSequence
{
  public:
    explicit HoraSequence(CheckContext& context) : m_context(context) {}

    void Check(const Documento& documento);

  private:
    bool IsSet(const Documento& documento) const;

    CheckContext& m_context;
    std::string m_coo, m_hora, m_fim;
};

} // namespace bancada::conferencia
