#include "bancada/conferencia/LossIndex.h"

namespace bancada::conferencia
{

LossIndex::LossIndex(const Losses& losses) : m_losses(losses)
{
    for (const RejectedStatement& rejected : losses.rejected) {
        m_rows.push_back(ReadRejectedRow(rejected.statement));
        const RejectedRow& row = m_rows.back();
        if (const auto coo = row.Value("cont_coo")) {
            (row.expected ? m_cuponsAdicionais : m_coos).insert(*coo);
        }
        if (const auto ccf = row.Value("cont_ccf")) {
            m_ccfs.insert(*ccf);
        }
        if (const auto gnf = row.Value("cont_gnf")) {
            m_gnfs.insert(*gnf);
        }
        if (const auto crz = row.Value("cont_crz")) {
            m_crzs.insert(*crz);
        }
    }
}

} // namespace bancada::conferencia
