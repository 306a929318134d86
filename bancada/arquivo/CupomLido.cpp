#include "bancada/arquivo/CupomLido.h"

#include "bancada/arquivo/Percentual.h"
#include "bancada/arquivo/Rateio.h"

#include <algorithm>
#include <optional>

namespace bancada::arquivo
{
namespace
{

CupomLido FromTotals(const Record& record)
{
    CupomLido cupom;
    cupom.record = record;
    cupom.subtotal = record.Integer("subtotal");
    cupom.desconto = record.Integer("desconto");
    cupom.acrescimo = record.Integer("acrescimo");
    cupom.acrescimoCancelado = record.Integer("acrescimo_cancelado");
    cupom.total = record.Integer("total");
    cupom.cancelado = record.Text("cancelado") == "S";
    return cupom;
}

ItemLido FromAmounts(Record record, std::int64_t bruto)
{
    ItemLido item;
    item.bruto = bruto;
    item.desconto = record.Integer("desconto");
    item.acrescimo = record.Integer("acrescimo");
    item.liquido = record.Integer("total");
    item.cancelado = record.Text("cancelado") == "S";
    item.record = std::move(record);
    return item;
}

// Quantity times unit price in cents, cut or rounded.
std::int64_t Bruto(const Record& item)
{
    std::int64_t product = item.Integer("quantidade") * item.Integer("valor_unitario");
    std::int64_t decimals = item.Integer("decimais_quantidade") + item.Integer("decimais_valor");
    std::int64_t unitsACent = 1;
    for (; decimals > 2; --decimals) {
        unitsACent *= 10;
    }
    for (; decimals < 2; ++decimals) {
        product *= 10;
    }
    const bool rounded = item.Text("arredonda_trunca") == "A";
    return (product + (rounded ? unitsACent / 2 : 0)) / unitsACent;
}

std::int64_t SumOfValid(const std::vector<ItemLido>& itens)
{
    std::int64_t sum = 0;
    for (const ItemLido& item : itens) {
        sum += item.cancelado ? 0 : item.liquido;
    }
    return sum;
}

// Finds the items of a cancelled receipt that were cancelled before it, by what they come to.
class Cancelados
{
  public:
    // REQUIRES: the receipt has items.
    explicit Cancelados(const CupomLido& cupom) : m_cupom(cupom)
    {
        for (ItemLido& item : m_cupom.itens) {
            item.cancelado = false;
        }
        m_all = SumOfValid(m_cupom.itens);
    }

    // The receipt as it may have been, the fewest cancelled items first, of as many the last ones
    // first. `valid`: what the others come to; any amount where there is none.
    std::vector<CupomLido> With(std::optional<std::int64_t> valid)
    {
        m_found.clear();
        m_steps = 0;
        // What is adjusted is what is left.
        const std::size_t most = m_cupom.itens.size() - (m_cupom.IsAdjusted() ? 1 : 0);
        for (std::size_t count = 0; count <= std::min(most, MAX_CANCELLED); ++count) {
            Mark(m_cupom.itens.size(), count,
                 valid ? std::optional<std::int64_t>(m_all - *valid) : std::nullopt);
        }
        return m_found;
    }

  private:
    // A receipt can have hundreds of items: so much is tried, and so much of it kept.
    static constexpr std::size_t MAX_CANCELLED = 4;
    static constexpr int MAX_STEPS = 20000;
    static constexpr std::size_t MAX_FOUND = 64;

    // Marks `count` of the items before `end`, which come to `excess`.
    void Mark(std::size_t end, std::size_t count, std::optional<std::int64_t> excess)
    {
        if (count == 0) {
            if (excess.value_or(0) == 0) {
                m_found.push_back(m_cupom);
            }
            return;
        }
        for (std::size_t i = end; i-- > 0 && m_found.size() < MAX_FOUND && ++m_steps < MAX_STEPS;) {
            m_cupom.itens[i].cancelado = true;
            Mark(i, count - 1,
                 excess ? std::optional<std::int64_t>(*excess - m_cupom.itens[i].liquido)
                        : std::nullopt);
            m_cupom.itens[i].cancelado = false;
        }
    }

    CupomLido m_cupom;
    std::int64_t m_all = 0;
    std::vector<CupomLido> m_found;
    int m_steps = 0;
};

// Takes the receipt's share out of the items' adjustments; false, and unchanged, where that cannot
// be told.
bool TakeSharesOut(CupomLido& cupom, std::int64_t subtotal)
{
    const bool desconto = cupom.desconto != 0;
    std::vector<ItemRateado> rateados;
    for (const ItemLido& item : cupom.itens) {
        if (!item.cancelado) {
            rateados.push_back({item.liquido, desconto ? item.bruto + item.acrescimo
                                                       : item.bruto - item.desconto});
        }
    }
    const auto liquidos =
        UndoRateio(desconto ? cupom.desconto : cupom.acrescimo, desconto, subtotal, rateados);
    if (!liquidos) {
        return false;
    }
    std::size_t at = 0;
    for (ItemLido& item : cupom.itens) {
        if (!item.cancelado) {
            const std::int64_t own = (*liquidos)[at] - rateados[at].limite;
            (desconto ? item.desconto : item.acrescimo) = desconto ? -own : own;
            ++at;
        }
    }
    cupom.rateado = true;
    return true;
}

// Of a receipt with totals: what its items come to tells.
void AddWithTotals(const CupomLido& cupom, std::vector<CupomLido>& found)
{
    const auto among = [&cupom](std::int64_t valid) {
        if (cupom.cancelado && !cupom.itens.empty()) {
            return Cancelados(cupom).With(valid);
        }
        return SumOfValid(cupom.itens) == valid ? std::vector<CupomLido>{cupom}
                                                : std::vector<CupomLido>();
    };
    bool shared = false;
    if (cupom.IsFiscal() && cupom.IsAdjusted() && cupom.subtotal != cupom.total) {
        for (CupomLido& one : among(cupom.total)) {
            shared = true;
            if (TakeSharesOut(one, cupom.subtotal)) {
                found.push_back(std::move(one));
            }
        }
    }
    for (CupomLido& one : among(cupom.subtotal)) {
        found.push_back(std::move(one));
    }
    if (found.empty()) {
        found.push_back(cupom.cancelado && !cupom.itens.empty()
                            ? Cancelados(cupom).With(std::nullopt).front()
                            : cupom);
        found.back().somado = shared;
        found.back().semCotas = !shared;
    }
    std::stable_sort(found.begin(), found.end(), [](const CupomLido& a, const CupomLido& b) {
        const auto count = [](const CupomLido& one) {
            return std::count_if(one.itens.begin(), one.itens.end(),
                                 [](const ItemLido& item) { return item.cancelado; });
        };
        return count(a) < count(b);
    });
}

// An additional receipt keeps the totals of its opening, which are none; that it is paid tells it
// from one that was not closed. Its items may stand with their shares, of which no total tells.
void AddAdicional(const CupomLido& cupom, std::int64_t paid, std::vector<CupomLido>& found)
{
    if (cupom.IsAdjusted()) {
        CupomLido shared = cupom;
        const std::int64_t sum = SumOfValid(cupom.itens);
        if (TakeSharesOut(shared, sum + cupom.desconto - cupom.acrescimo) && paid >= shared.Due()) {
            shared.adicional = true;
            found.push_back(std::move(shared));
        }
    }
    if (paid >= cupom.Due()) {
        found.push_back(cupom);
        found.back().adicional = true;
    }
}

void AddWithoutTotals(const CupomLido& cupom, bool mayBeCancelledLater,
                      std::vector<CupomLido>& found)
{
    const std::vector<CupomLido> among = cupom.cancelado && !cupom.itens.empty()
                                             ? Cancelados(cupom).With(std::nullopt)
                                             : std::vector<CupomLido>{cupom};
    std::int64_t paid = 0;
    for (const Record& record : cupom.pagamentos) {
        paid += record.Integer("valor");
    }
    if (cupom.IsFiscal() && !cupom.itens.empty() && (!cupom.cancelado || mayBeCancelledLater)) {
        for (const CupomLido& one : among) {
            // None is closed when all its items are cancelled.
            if (std::any_of(one.itens.begin(), one.itens.end(),
                            [](const ItemLido& item) { return !item.cancelado; })) {
                AddAdicional(one, paid, found);
            }
        }
    }
    if (found.empty() || cupom.cancelado) {
        found.insert(found.end(), among.begin(), among.end());
    }
}

// Whether some percentage of what it was applied to comes to a surcharge by percentage.
bool HasPercentual(const CupomLido& cupom)
{
    return cupom.acrescimo == 0 || cupom.record.Text("tipo_acrescimo") != "P" ||
           PercentualOf(cupom.Due() - cupom.acrescimo + cupom.desconto, cupom.acrescimo) != 0;
}

} // namespace

std::int64_t CupomLido::Due() const
{
    std::int64_t due = acrescimo - desconto;
    for (const ItemLido& item : itens) {
        due += item.cancelado ? 0 : item.bruto + item.acrescimo - item.desconto;
    }
    return due;
}

CupomLido ReadCupom(ArquivoLido& arquivo, std::int64_t coo)
{
    CupomLido cupom = FromTotals(arquivo.Read("E14", coo).front());
    for (Record& record : arquivo.Read("E15", coo)) {
        const std::int64_t bruto = Bruto(record);
        cupom.itens.push_back(FromAmounts(std::move(record), bruto));
    }
    cupom.pagamentos = arquivo.Read("E21", coo);
    return cupom;
}

CupomLido ReadCupomNf(ArquivoLido& arquivo, std::int64_t coo)
{
    CupomLido cupom = FromTotals(arquivo.Read("E19", coo).front());
    for (Record& record : arquivo.Read("E20", coo)) {
        const std::int64_t bruto = record.Integer("valor");
        cupom.itens.push_back(FromAmounts(std::move(record), bruto));
    }
    cupom.pagamentos = arquivo.Read("E21", coo);
    return cupom;
}

std::vector<CupomLido> Interpretacoes(const CupomLido& cupom, bool mayBeCancelledLater)
{
    std::vector<CupomLido> found;
    if (cupom.HasTotals()) {
        AddWithTotals(cupom, found);
    } else {
        AddWithoutTotals(cupom, mayBeCancelledLater, found);
    }
    std::stable_partition(found.begin(), found.end(), HasPercentual);
    return found;
}

} // namespace bancada::arquivo
