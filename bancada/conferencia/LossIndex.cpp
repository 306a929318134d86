#include "bancada/conferencia/LossIndex.h"

#include "bancada/conferencia/Dominio.h"

#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace bancada::conferencia
{
namespace
{

using leitura::Amount;

constexpr int THOUSANDTHS = 3;

// The values of an insert, cut at every comma: a text that holds one shifts what stands behind it,
// so that they are counted from the side on which no text stands.
std::vector<std::string> ValuesOf(const std::string& statement)
{
    constexpr std::string_view VALUES = "VALUES (";
    const std::size_t begin = statement.find(VALUES);
    if (begin == std::string::npos || statement.back() != ')') {
        return {};
    }
    const std::string text =
        statement.substr(begin + VALUES.size(), statement.size() - begin - VALUES.size() - 1);
    std::vector<std::string> values(1);
    for (const char c : text) {
        if (c == ',') {
            values.emplace_back();
        } else {
            values.back() += c;
        }
    }
    return values;
}

// "12.50" or "12.500"; nothing for any other text.
std::optional<Amount> AmountOf(const std::string& text)
{
    const std::size_t point = text.find('.');
    const std::size_t decimals = point == std::string::npos ? 0 : text.size() - point - 1;
    std::string digits = text;
    if (point != std::string::npos) {
        digits.erase(point, 1);
    }
    constexpr std::size_t MOST_DIGITS = 15;
    if (digits.empty() || digits.size() > MOST_DIGITS || decimals > THOUSANDTHS ||
        digits.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    return Amount(std::strtoll(digits.c_str(), nullptr, 10), static_cast<int>(decimals));
}

} // namespace

Amount LostRows::Itens() const
{
    Amount soma;
    for (const LostItem& item : itens) {
        soma = soma + item.total.WithDecimals(2);
    }
    return soma;
}

Amount LostRows::Pagamentos() const
{
    Amount soma;
    for (const LostPagamento& pagamento : pagamentos) {
        soma = soma + pagamento.valor;
    }
    return soma;
}

LossIndex::LossIndex(const Losses& losses) : m_losses(losses)
{
    for (const RejectedStatement& rejected : losses.rejected) {
        m_rows.push_back(ReadRejectedRow(rejected.statement));
        Add(m_rows.back(), rejected.statement);
    }
}

void LossIndex::Add(const RejectedRow& row, const std::string& statement)
{
    const auto coo = row.Value("cont_coo");
    if (coo) {
        (row.expected ? m_cuponsAdicionais : m_coos).insert(*coo);
    }
    if (const auto ccf = row.Value("cont_ccf")) {
        m_ccfs.insert(*ccf);
    }
    if (const auto gnf = row.Value("cont_gnf")) {
        m_gnfs.insert(*gnf);
    }
    const auto crz = row.Value("cont_crz");
    if (crz) {
        m_crzs.insert(*crz);
    }
    if (row.expected || AddAmounts(row, statement)) {
        return;
    }
    if (coo) {
        m_vagueCoos.insert(*coo);
    }
    if (crz) {
        m_vagueCrzs.insert(*crz);
    }
}

bool LossIndex::AddAmounts(const RejectedRow& row, const std::string& statement)
{
    const auto coo = row.Value("cont_coo");
    if (row.operation != "INSERT" || !coo) {
        return false;
    }
    const auto crz = row.Value("cont_crz");
    if ((row.table == "cupom_fiscal" || row.table == "cupom_nf") && crz) {
        (row.table == "cupom_fiscal" ? m_cupons : m_cuponsNf).emplace(*coo, *crz);
        return true;
    }
    const std::vector<std::string> values = ValuesOf(statement);
    const auto fromEnd = [&values](std::size_t place) { return values[values.size() - 1 - place]; };
    if (row.table == "item_cupom_fiscal") {
        constexpr std::size_t COLUMNS = 20;
        constexpr std::size_t TOTAL = 6; // from the end
        constexpr std::size_t ALIQUOTA = 14;
        if (values.size() < COLUMNS) {
            return false;
        }
        const std::string code = fromEnd(ALIQUOTA);
        const std::optional<Amount> total = AmountOf(fromEnd(TOTAL));
        const bool quoted = code.size() > 2 && code.front() == '\'' && code.back() == '\'';
        if (!total || !quoted || !IsTaxCode(code.substr(1, code.size() - 2))) {
            return false;
        }
        m_lost[*coo].itens.push_back({code.substr(1, code.size() - 2), *total});
        return true;
    }
    if (row.table == "pagamento_cupom") {
        constexpr std::size_t COLUMNS = 8;
        constexpr std::size_t VALOR = 2;
        constexpr std::size_t MEIO = 2; // from the end
        if (values.size() < COLUMNS) {
            return false;
        }
        const std::optional<Amount> valor = AmountOf(values[VALOR]);
        const std::optional<Amount> meio = AmountOf(fromEnd(MEIO));
        if (!valor || !meio) {
            return false;
        }
        m_lost[*coo].pagamentos.push_back({meio->Units(), *valor});
        return true;
    }
    return false;
}

const LostRows& LossIndex::Of(std::int64_t coo) const
{
    static const LostRows none;
    const auto found = m_lost.find(coo);
    return found == m_lost.end() ? none : found->second;
}

void LossIndex::AddCrz(std::int64_t coo, std::int64_t crz)
{
    m_crzs.insert(crz);
    if (IsVagueCoo(coo)) {
        m_vagueCrzs.insert(crz);
    }
}

} // namespace bancada::conferencia
