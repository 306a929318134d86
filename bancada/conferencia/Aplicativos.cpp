#include "bancada/conferencia/Aplicativos.h"

#include "bancada/Messages.h"
#include "bancada/conferencia/Texts.h"

namespace bancada::conferencia
{

void Aplicativos::Check(FindingReport& findings, const leitura::CupomFiscalRow& cupom)
{
    const std::string& text = cupom.textoComplementar.Value();
    if (m_before && m_last && *m_before == text && m_last->textoComplementar.Value() != text) {
        const std::string found = m_last->textoComplementar.Shown();
        findings.Report(FindingKind::CUPOM_COLUNAS, Coo(m_last->coo),
                        Tr("application '%1', before and behind '%2'", {found, text}),
                        DocumentOf(m_last->coo.Value()),
                        {"cupom_fiscal", m_last->rowid, "texto_complementar", text, found});
        m_last = cupom;
        return; // what stood there alone is nobody's neighbour
    }
    if (m_last) {
        m_before = m_last->textoComplementar.Value();
    }
    m_last = cupom;
}

} // namespace bancada::conferencia
