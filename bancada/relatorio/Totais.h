// What the shown documents come to: by day, by tax code and by payment means.
#pragma once

#include "bancada/relatorio/Report.h"
#include "bancada/relatorio/Vendas.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace bancada::relatorio
{

// Sums of the receipts of a jornada.
struct TotalDia {
    Integer crz;
    // The fiscal day of the reduction; of an open jornada the beginning of its first document.
    Text movimento;
    bool fechado = false;
    // Gross sales of the reduction; zero while the jornada is open.
    Amount vb;
    // Fiscal receipts that are not cancelled and what they came to.
    std::int64_t cupons = 0;
    Amount vendido;
    // Cancelled receipts of either kind.
    std::int64_t cancelados = 0;
    // Fiscal receipts whose total is not known: they are in no sum.
    std::int64_t unreadable = 0;
};

// Items that are not cancelled, of closed fiscal receipts that are not.
struct TotalAliquota {
    // The tax code as it stands in the row.
    Text aliquota;
    std::int64_t itens = 0;
    // After the items' adjustments, three decimals.
    Amount valor{0, 3};
};

struct Totais {
    std::vector<TotalDia> dias;
    // By tax code.
    std::vector<TotalAliquota> aliquotas;
    // What the totals of those receipts are above their items: subtotal adjustments that were not
    // apportioned. Three decimals.
    Amount foraDosItens{0, 3};
    // Items and totals whose amount is not known: they are in no sum by tax code.
    std::int64_t unreadable = 0;
    VendasByHora horas;
    VendasByMeio meios;
    // The change of fiscal receipts.
    Amount troco;
};

// Adds what another database of the register tells; its days come behind.
void Add(Totais& sum, const Totais& other);

// Adds the documents up that it is shown, as Vendas.h does where a sum stands there too. Rows that
// several documents of one number show alike are added once.
class TotaisCollector final : public JornadaVisitor
{
  public:
    explicit TotaisCollector(Cadastro& cadastro);

    void BeginJornada(const Jornada& jornada) override;
    // REQUIRES: the document is complete.
    void VisitDocumento(Documento& documento) override;
    void EndJornada(const Jornada&) override {}

    // Of all that it was shown.
    [[nodiscard]] Totais Sums() const;

  private:
    void AddCupom(const Documento& documento);
    void AddItens(const Documento& documento);
    void AddPagamentos(const Documento& documento);

    Cadastro& m_cadastro;
    Totais m_sums;
    std::map<std::string, TotalAliquota> m_aliquotas;
    std::map<std::pair<std::int64_t, std::string>, VendaMeio> m_meios;
    // The documents, by their numbers, whose uncertain rows were added.
    std::set<std::pair<TipoDocumento, std::int64_t>> m_uncertain;
};

// Of what a walk of the report meets, of the jornada `crz` alone when that is given. Throws
// Unusable where the database cannot be read.
Totais ReadTotais(Report& report, std::optional<std::int64_t> crz = {});

} // namespace bancada::relatorio
