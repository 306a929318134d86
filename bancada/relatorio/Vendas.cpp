#include "bancada/relatorio/Vendas.h"

#include "bancada/leitura/Query.h"

#include <map>
#include <string>
#include <utility>

namespace bancada::relatorio
{

std::vector<VendaHora> ReadVendasByHora(const leitura::DatabaseReading& database,
                                        std::optional<std::int64_t> crz)
{
    leitura::Query cupons(
        database, "SELECT CAST(substr(data_hora_emissao, 12, 2) AS INTEGER) AS hora, valor_total"
                  " FROM cupom_fiscal WHERE id_cancelado IS NOT 'S'"
                  " AND (?1 IS NULL OR cont_crz = ?1)");
    std::vector<VendaHora> horas(24);
    for (cupons.With(crz); cupons.Next();) {
        const Integer hora = cupons.ReadInteger("hora");
        const Amount valor = cupons.ReadAmount("valor_total", 2);
        if (hora.IsKnown() && hora.Value() >= 0 && hora.Value() < 24 && valor.IsKnown()) {
            VendaHora& venda = horas[static_cast<std::size_t>(hora.Value())];
            ++venda.cupons;
            venda.valor = venda.valor + valor;
        }
    }
    return horas;
}

std::vector<VendaMeio> ReadVendasByMeio(const leitura::DatabaseReading& database,
                                        Cadastro& cadastro, std::optional<std::int64_t> crz)
{
    leitura::Query pagos(database,
                         "SELECT p.indice_meio_pagamento AS meio, p.valor_pagamento AS valor,"
                         " p.valor_estornado AS estornado FROM pagamento_cupom p WHERE"
                         " EXISTS (SELECT 1 FROM cupom_fiscal c WHERE c.cont_coo = p.cont_coo AND"
                         " c.id_cancelado IS NOT 'S' AND (?1 IS NULL OR c.cont_crz = ?1)) OR"
                         " EXISTS (SELECT 1 FROM cupom_nf n WHERE n.cont_coo = p.cont_coo AND"
                         " n.id_cancelado IS NOT 'S' AND (?1 IS NULL OR n.cont_crz = ?1))");
    // By number; what is none, by what stands there.
    std::map<std::pair<std::int64_t, std::string>, VendaMeio> byIndice;
    for (pagos.With(crz); pagos.Next();) {
        const Integer meio = pagos.ReadInteger("meio");
        const Amount saldo = pagos.ReadAmount("valor", 2) - pagos.ReadAmount("estornado", 2);
        if (saldo.IsKnown() && !saldo.IsZero()) {
            VendaMeio& venda = byIndice[{meio.Value(), meio.Raw()}];
            venda.indice = meio;
            ++venda.pagamentos;
            venda.valor = venda.valor + saldo;
        }
    }
    std::vector<VendaMeio> vendas;
    for (auto& [indice, venda] : byIndice) {
        venda.nome = cadastro.FindMeio(venda.indice);
        vendas.push_back(std::move(venda));
    }
    return vendas;
}

Amount ReadTroco(const leitura::DatabaseReading& database, std::optional<std::int64_t> crz)
{
    leitura::Query cupons(database,
                          "SELECT valor_troco FROM cupom_fiscal WHERE id_cancelado IS NOT 'S'"
                          " AND (?1 IS NULL OR cont_crz = ?1)");
    Amount sum;
    for (cupons.With(crz); cupons.Next();) {
        const Amount troco = cupons.ReadAmount("valor_troco", 2);
        sum = troco.IsKnown() ? sum + troco : sum;
    }
    return sum;
}

} // namespace bancada::relatorio
