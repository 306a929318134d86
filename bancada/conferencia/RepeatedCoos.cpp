#include "bancada/conferencia/RepeatedCoos.h"

#include "bancada/leitura/Query.h"

#include <optional>

namespace bancada::conferencia
{
namespace
{

// The numbers of a table in order, each as often as it stands there.
class OrderedCoos
{
  public:
    OrderedCoos(const leitura::DatabaseReading& database, const std::string& table)
        : m_query(database, "SELECT cont_coo FROM " + table +
                                " WHERE typeof(cont_coo) = 'integer' ORDER BY cont_coo")
    {
        Advance();
    }

    const std::optional<std::int64_t>& Current() const { return m_current; }
    void Advance()
    {
        m_current =
            m_query.Next() ? std::optional(m_query.ReadInteger("cont_coo").Value()) : std::nullopt;
    }

  private:
    leitura::Query m_query;
    std::optional<std::int64_t> m_current;
};

} // namespace

RepeatedCoos::RepeatedCoos(const leitura::DatabaseReading& database)
{
    OrderedCoos fiscal(database, "cupom_fiscal");
    OrderedCoos naoFiscal(database, "cupom_nf");
    std::optional<std::int64_t> last;
    while (fiscal.Current() || naoFiscal.Current()) {
        const bool takeFiscal =
            fiscal.Current() && (!naoFiscal.Current() || *fiscal.Current() <= *naoFiscal.Current());
        OrderedCoos& next = takeFiscal ? fiscal : naoFiscal;
        if (next.Current() == last) {
            m_repeated.insert(*last);
        }
        last = next.Current();
        next.Advance();
    }
    leitura::Query days(database, "SELECT count(DISTINCT cont_crz) AS day_count FROM"
                                  " (SELECT cont_crz FROM cupom_fiscal WHERE cont_coo = ?1"
                                  " UNION ALL SELECT cont_crz FROM cupom_nf WHERE cont_coo = ?1)");
    for (const std::int64_t coo : m_repeated) {
        days.With(coo);
        if (days.Next() && days.ReadInteger("day_count").Value() > 1) {
            m_round.insert(coo);
        }
    }
    leitura::Query outros(database, "SELECT cont_coo FROM outros_documentos"
                                    " WHERE typeof(cont_coo) = 'integer'"
                                    " GROUP BY cont_coo HAVING count(*) > 1");
    while (outros.Next()) {
        m_outros.insert(outros.ReadInteger("cont_coo").Value());
    }
}

bool RepeatedCoos::IsSingle(const leitura::Integer& coo) const
{
    return coo.IsKnown() && m_repeated.count(coo.Value()) == 0;
}

bool RepeatedCoos::HasComeRound(const leitura::Integer& coo) const
{
    return coo.IsKnown() && m_round.count(coo.Value()) != 0;
}

bool RepeatedCoos::IsSingleOutro(const leitura::Integer& coo) const
{
    return coo.IsKnown() && m_outros.count(coo.Value()) == 0;
}

} // namespace bancada::conferencia
