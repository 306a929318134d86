#include "bancada/conferencia/CheckContext.h"

#include "bancada/Messages.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/leitura/Counter.h"
#include "bancada/leitura/Limits.h"
#include "bancada/leitura/Query.h"
#include "bancada/leitura/Tables.h"

#include <algorithm>

namespace bancada::conferencia
{
namespace
{

// The last of each table, the later of the two; of the same second, the one further on.
UltimoDocumento ReadUltimo(const leitura::DatabaseReading& database)
{
    leitura::CupomFiscalRow fiscal;
    const bool hasFiscal =
        leitura::Rows(database, leitura::CupomFiscalTable(), "ORDER BY rowid DESC LIMIT 1")
            .Next(fiscal);
    leitura::OutroDocumentoRow outro;
    const bool hasOutro =
        leitura::Rows(database, leitura::OutroDocumentoTable(), "ORDER BY rowid DESC LIMIT 1")
            .Next(outro);
    if (!hasFiscal && !hasOutro) {
        return {};
    }
    bool isFiscal = hasFiscal;
    if (hasFiscal && hasOutro) {
        const std::string& fiscalTime = fiscal.dataHoraEmissao.Value();
        const std::string& outroTime = outro.dataHoraInicioEmissao.Value();
        isFiscal = fiscalTime != outroTime ? fiscalTime > outroTime
                                           : leitura::Steps(outro.coo.Value(), fiscal.coo.Value()) <
                                                 leitura::LAST_COUNTER / 2;
    }
    return {isFiscal ? fiscal.coo : outro.coo, isFiscal};
}

bool ReadBegin(const leitura::DatabaseReading& database)
{
    leitura::Query first(database,
                         "SELECT cont_coo = 1 AS is_first FROM (SELECT cont_coo,"
                         " data_hora_emissao AS hora FROM cupom_fiscal WHERE rowid = (SELECT"
                         " min(rowid) FROM cupom_fiscal) UNION ALL SELECT cont_coo,"
                         " data_hora_inicio_emissao FROM outros_documentos WHERE rowid = (SELECT"
                         " min(rowid) FROM outros_documentos)) ORDER BY is_first DESC");
    return first.Next() && first.ReadInteger("is_first").Value() == 1;
}

} // namespace

CheckContext::CheckContext(const leitura::DatabaseReading& database, const LossIndex* losses,
                           const FindingSink& sink)
    : findings(losses, sink), chaves(database), m_database(database), m_losses(losses),
      m_repeated(database), m_acertos(database, m_repeated), m_ultimo(ReadUltimo(database)),
      m_beginsAtFactory(ReadBegin(database)), m_pagamentos(database)
{
}

const LostRows& CheckContext::LostOf(std::int64_t coo) const
{
    static const LostRows none;
    return m_losses == nullptr ? none : m_losses->Of(coo);
}

bool CheckContext::MayHaveLost(const std::string& table) const
{
    return m_losses != nullptr &&
           (!m_losses->All().lost.empty() ||
            std::any_of(m_losses->Rows().begin(), m_losses->Rows().end(),
                        [&table](const RejectedRow& row) { return row.table == table; }));
}

bool CheckContext::IsUltimo(const leitura::Integer& coo, bool fiscal) const
{
    return m_ultimo.fiscal == fiscal && m_ultimo.coo.Value() == coo.Value();
}

Pagamentos CheckContext::ReadPagamentos(std::int64_t coo)
{
    Pagamentos pagamentos = m_pagamentos.Read(coo);
    m_gnfsDeEstorno.insert(pagamentos.gnfsDeEstorno.begin(), pagamentos.gnfsDeEstorno.end());
    return pagamentos;
}

void ReportMissingItens(CheckContext& context, std::int64_t coo, std::int64_t previous,
                        std::int64_t item)
{
    if (item <= previous || item - 1 == previous) {
        return;
    }

    context.findings.Report(FindingKind::ITEM_AUSENTE, Coo(coo),
                            Tr("no row of item %1", {RangeText(previous + 1, item - 1)}),
                            DocumentOf(coo));
}

} // namespace bancada::conferencia
