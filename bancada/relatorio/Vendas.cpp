#include "bancada/relatorio/Vendas.h"

#include "bancada/leitura/Query.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

namespace bancada::relatorio
{

namespace
{

// The condition of the receipts that count: in the range, of the jornada ?1, not cancelled.
std::string Counting(const leitura::RowRange& range)
{
    return "WHERE " + Within(range) +
           " AND id_cancelado IS NOT 'S' AND (?1 IS NULL OR cont_crz = ?1)";
}

// Adds the numbers of the receipts that count.
void AddCoos(const leitura::DatabaseReading& database, const std::string& table,
             const leitura::RowRange& range, std::optional<std::int64_t> crz,
             std::vector<std::int64_t>& coos)
{
    leitura::Query cupons(database, "SELECT cont_coo FROM " + table + " " + Counting(range));
    for (cupons.With(crz); cupons.Next();) {
        if (const Integer coo = cupons.ReadInteger("cont_coo"); coo.IsKnown()) {
            coos.push_back(coo.Value());
        }
    }
}

} // namespace

std::optional<std::size_t> HourOf(const Text& instant)
{
    const std::string& text = instant.Value();
    const std::string digits = text.size() < 13 ? std::string() : text.substr(11, 2);
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
        return {};
    }
    const int hora = (digits[0] - '0') * 10 + (digits[1] - '0');
    return hora < 24 ? std::optional(static_cast<std::size_t>(hora)) : std::nullopt;
}

VendasByHora ReadVendasByHora(const leitura::DatabaseReading& database, const JornadaRange& range,
                              std::optional<std::int64_t> crz)
{
    leitura::Query cupons(database, "SELECT data_hora_emissao AS inicio, valor_total"
                                    " FROM cupom_fiscal " +
                                        Counting(range.cuponsFiscais));
    VendasByHora vendas;
    vendas.horas.resize(24);
    for (cupons.With(crz); cupons.Next();) {
        const std::optional<std::size_t> hora = HourOf(cupons.ReadText("inicio"));
        const Amount valor = cupons.ReadAmount("valor_total", 2);
        if (hora && valor.IsKnown()) {
            VendaHora& venda = vendas.horas[*hora];
            ++venda.cupons;
            venda.valor = venda.valor + valor;
        } else {
            ++vendas.unreadable;
        }
    }
    return vendas;
}

VendasByMeio ReadVendasByMeio(const leitura::DatabaseReading& database, const JornadaRange& range,
                              Cadastro& cadastro, std::optional<std::int64_t> crz)
{
    // A payment counts once, however many receipts bear its number.
    std::vector<std::int64_t> coos;
    AddCoos(database, "cupom_fiscal", range.cuponsFiscais, crz, coos);
    AddCoos(database, "cupom_nf", range.cuponsNf, crz, coos);
    std::sort(coos.begin(), coos.end());
    coos.erase(std::unique(coos.begin(), coos.end()), coos.end());

    leitura::Query pagos(database,
                         "SELECT indice_meio_pagamento AS meio, valor_pagamento AS valor,"
                         " valor_estornado AS estornado FROM pagamento_cupom WHERE cont_coo = ?1");
    VendasByMeio vendas;
    // By number; what is none, by what stands there.
    std::map<std::pair<std::int64_t, std::string>, VendaMeio> byIndice;
    for (const std::int64_t coo : coos) {
        for (pagos.With(coo); pagos.Next();) {
            const Integer meio = pagos.ReadInteger("meio");
            const Amount saldo = pagos.ReadAmount("valor", 2) - pagos.ReadAmount("estornado", 2);
            if (!saldo.IsKnown()) {
                ++vendas.unreadable;
            } else if (!saldo.IsZero()) {
                VendaMeio& venda = byIndice[{meio.Value(), meio.Raw()}];
                venda.indice = meio;
                ++venda.pagamentos;
                venda.valor = venda.valor + saldo;
            }
        }
    }
    for (auto& [indice, venda] : byIndice) {
        venda.nome = cadastro.FindMeio(venda.indice);
        vendas.meios.push_back(std::move(venda));
    }
    return vendas;
}

void Add(VendasByHora& sum, const VendasByHora& other)
{
    sum.horas.resize(other.horas.size());
    for (std::size_t hora = 0; hora < other.horas.size(); ++hora) {
        sum.horas[hora].cupons += other.horas[hora].cupons;
        sum.horas[hora].valor = sum.horas[hora].valor + other.horas[hora].valor;
    }
    sum.unreadable += other.unreadable;
}

void Add(VendasByMeio& sum, const VendasByMeio& other)
{
    for (const VendaMeio& meio : other.meios) {
        const auto same =
            std::find_if(sum.meios.begin(), sum.meios.end(), [&](const VendaMeio& one) {
                return one.indice.Value() == meio.indice.Value() &&
                       one.indice.Raw() == meio.indice.Raw();
            });
        if (same == sum.meios.end()) {
            sum.meios.push_back(meio);
            continue;
        }
        same->nome = same->nome.Shown().empty() ? meio.nome : same->nome;
        same->pagamentos += meio.pagamentos;
        same->valor = same->valor + meio.valor;
    }
    sum.unreadable += other.unreadable;
}

Amount ReadTroco(const leitura::DatabaseReading& database, const JornadaRange& range,
                 std::optional<std::int64_t> crz)
{
    leitura::Query cupons(database,
                          "SELECT valor_troco FROM cupom_fiscal " + Counting(range.cuponsFiscais));
    Amount sum;
    for (cupons.With(crz); cupons.Next();) {
        const Amount troco = cupons.ReadAmount("valor_troco", 2);
        sum = troco.IsKnown() ? sum + troco : sum;
    }
    return sum;
}

} // namespace bancada::relatorio
