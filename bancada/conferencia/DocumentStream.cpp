#include "bancada/conferencia/DocumentStream.h"

#include "bancada/leitura/Counter.h"

#include <utility>

namespace bancada::conferencia
{

DocumentStream::DocumentStream(const leitura::DatabaseReading& database, const Acertos& acertos)
    : m_acertos(acertos), m_fiscais(database,
                                    leitura::CupomFiscalTable().Only(
                                        {"cont_coo", "cont_ccf", "cont_crz", "data_hora_emissao",
                                         "assinatura_documento", "id_cancelado"}),
                                    "ORDER BY rowid"),
      m_outros(database, leitura::OutroDocumentoTable(), "ORDER BY rowid"),
      m_reducoes(
          database,
          "SELECT rowid AS row_number, cont_coo, cont_gnf, cont_crz, data_hora_emissao FROM reducao_z z WHERE NOT"
          " EXISTS (SELECT 1 FROM outros_documentos o WHERE o.cont_coo = z.cont_coo AND"
          " o.id_tipo_documento = 'RZ') ORDER BY rowid"),
      m_pagamento(database, "SELECT 1 AS found FROM pagamento_cupom WHERE cont_coo = ?1 LIMIT 1")
{
    ReadFiscal();
    ReadReducao();
    ReadOutro();
}

std::optional<Documento> DocumentStream::Next(const std::optional<std::int64_t>& last)
{
    std::optional<Documento> documento;
    if (IsNextFiscal(last)) {
        documento = std::move(m_fiscal);
        ReadFiscal();
    } else {
        documento = std::move(m_outro);
        ReadOutro();
    }
    return documento;
}

// Each table holds its documents in the order of issue. Of the two next ones the successor comes
// first; where neither is, or both are, the earlier one.
bool DocumentStream::IsNextFiscal(const std::optional<std::int64_t>& last) const
{
    if (!m_fiscal || !m_outro) {
        return m_fiscal.has_value();
    }
    if (last) {
        const bool fiscalFollows = leitura::Steps(*last, m_fiscal->coo.Value()) == 1;
        const bool outroFollows = leitura::Steps(*last, m_outro->coo.Value()) == 1;
        if (fiscalFollows != outroFollows) {
            return fiscalFollows;
        }
    }
    if (m_fiscal->hora != m_outro->hora) {
        return IsFiscalEarlier();
    }
    if (last) {
        return leitura::Steps(*last, m_fiscal->coo.Value()) <
               leitura::Steps(*last, m_outro->coo.Value());
    }
    return m_fiscal->coo.Value() < m_outro->coo.Value();
}

// By their times, unless the clock was set back between the two: the later time is then that of
// the earlier document.
bool DocumentStream::IsFiscalEarlier() const
{
    const bool earlier = m_fiscal->hora < m_outro->hora;
    const std::int64_t first = (earlier ? m_fiscal : m_outro)->coo.Value();
    const std::int64_t later = (earlier ? m_outro : m_fiscal)->coo.Value();
    const bool back = leitura::ComesBefore(later, first) && m_acertos.HasBetween(later, first);
    return earlier != back;
}

void DocumentStream::ReadFiscal()
{
    leitura::CupomFiscalRow row;
    if (!m_fiscais.Next(row)) {
        m_fiscal.reset();
        return;
    }
    m_fiscal = Documento{true,
                         row.coo,
                         row.ccf,
                         {},
                         {},
                         row.crz,
                         row.dataHoraEmissao.Value(),
                         row.dataHoraEmissao.Value(),
                         std::string(),
                         NumeroDe(row),
                         "cupom_fiscal",
                         row.rowid};
}

void DocumentStream::ReadOutro()
{
    leitura::OutroDocumentoRow row;
    if (m_behind) {
        m_outro = std::move(m_behind);
        m_behind.reset();
    } else if (!m_outrosEnded && m_outros.Next(row)) {
        m_outro = Documento{false,
                            row.coo,
                            row.gnf,
                            row.grg,
                            row.cdc,
                            row.crz,
                            row.dataHoraInicioEmissao.Value(),
                            row.dataHoraFimEmissao.Value(),
                            row.tipoDocumento.Value(),
                            NumeroDoCancelamento::NONE,
                            "outros_documentos",
                            row.rowid};
    } else {
        m_outrosEnded = true;
        m_outro.reset();
    }
    if (m_reducao && (!m_outro || m_reducao->hora < m_outro->hora ||
                      (m_reducao->hora == m_outro->hora &&
                       leitura::ComesBefore(m_reducao->coo.Value(), m_outro->coo.Value())))) {
        m_behind = std::move(m_outro);
        m_outro = std::move(m_reducao);
        ReadReducao();
    }
}

void DocumentStream::ReadReducao()
{
    m_reducao.reset();
    if (m_reducoes.Next()) {
        const std::string hora = m_reducoes.ReadText("data_hora_emissao").Value();
        m_reducao = Documento{false,
                              m_reducoes.ReadInteger("cont_coo"),
                              m_reducoes.ReadInteger("cont_gnf"),
                              leitura::Integer(leitura::CellState::NO_COLUMN),
                              leitura::Integer(leitura::CellState::NO_COLUMN),
                              m_reducoes.ReadInteger("cont_crz"),
                              hora,
                              hora,
                              "RZ",
                              NumeroDoCancelamento::NONE,
                              "reducao_z",
                              m_reducoes.ReadInteger("row_number").Value()};
    }
}

// A closing signs the receipt.
NumeroDoCancelamento DocumentStream::NumeroDe(const leitura::CupomFiscalRow& cupom)
{
    if (!cupom.cancelado.IsSet()) {
        return NumeroDoCancelamento::NONE;
    }
    if (cupom.assinaturaDocumento.Value().find_first_not_of(' ') != std::string::npos) {
        return NumeroDoCancelamento::ONE;
    }
    const bool paid = m_pagamento.With(cupom.coo.Value()).Next();
    m_pagamento.End();
    return paid ? NumeroDoCancelamento::PERHAPS : NumeroDoCancelamento::NONE;
}

} // namespace bancada::conferencia
