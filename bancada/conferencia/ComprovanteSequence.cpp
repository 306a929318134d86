#include "bancada/Messages.h"
#include "bancada/conferencia/Sequencias.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"

namespace bancada::conferencia
{

ComprovanteSequence::ComprovanteSequence(CheckContext& context, const Counted& counted)
    : m_context(context), m_counted(counted)
{
}

void ComprovanteSequence::Check(const Documento& documento)
{
    const std::optional<std::int64_t> lastCoo = m_lastCoo;
    m_lastCoo = documento.coo.Value();
    if (documento.fiscal) {
        return;
    }
    const bool gap = lastCoo && leitura::Steps(*lastCoo, documento.coo.Value()) != 1;
    m_gap = m_gap || gap;
    const leitura::Integer& number = documento.*m_counted.number;
    if (!number.IsKnown() || number.State() == leitura::CellState::NO_COLUMN) {
        return;
    }
    if (documento.tipo == m_counted.tipo) {
        m_expected.Advance(1);
    }
    // Documents without a row may have been of this kind; they are told as missing.
    const bool wrapped = m_expected.Value() && *m_expected.Value() > leitura::LAST_COUNTER;
    if (m_gap || wrapped) {
        m_expected.Set(number.Value());
    }
    m_gap = false;
    const std::optional<std::int64_t> expected = m_expected.Value();
    if (!m_expected.Accept(number.Value())) {
        m_context.findings.Report(
            FindingKind::CONTADOR_DOCUMENTO, Coo(documento.coo),
            Tr("%1 %2, where %3 is due",
               {m_counted.label, Number(number), std::to_string(*expected)}),
            DocumentOf(documento.coo.Value()),
            PlaceIn(documento, m_counted.column, std::to_string(*expected), Number(number)));
    }
}

} // namespace bancada::conferencia
