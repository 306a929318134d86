// What was sold: by hour, by payment means, and the change that was given.
#pragma once

#include "bancada/leitura/DatabaseReading.h"
#include "bancada/relatorio/Cadastro.h"
#include "bancada/relatorio/Documento.h"
#include "bancada/relatorio/JornadaRange.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace bancada::relatorio
{

struct VendaHora {
    std::int64_t cupons = 0;
    Amount valor;
};

struct VendaMeio {
    Integer indice;
    // Empty where the means is not programmed.
    Text nome;
    std::int64_t pagamentos = 0;
    Amount valor;
};

struct VendasByHora {
    // 24 of them.
    std::vector<VendaHora> horas;
    // Receipts of which the hour or the total is not known: they are in no sum.
    std::int64_t unreadable = 0;
};

struct VendasByMeio {
    std::vector<VendaMeio> meios;
    // Payments whose amount is not known: they are in no sum.
    std::int64_t unreadable = 0;
};

// Each is of the receipts in `range`, and of one jornada alone when `crz` is given. Throws Unusable
// where the database cannot be read. An amount that is not known is left out of a sum.

// Fiscal receipts that are not cancelled.
VendasByHora ReadVendasByHora(const leitura::DatabaseReading& database, const JornadaRange& range,
                              std::optional<std::int64_t> crz);

// What the payments of receipts of either kind that are not cancelled came to, by means. Change is
// not taken off.
VendasByMeio ReadVendasByMeio(const leitura::DatabaseReading& database, const JornadaRange& range,
                              Cadastro& cadastro, std::optional<std::int64_t> crz);

// The hour of an instant "yyyy-mm-dd hh:mm:ss"; nothing where it has none.
std::optional<std::size_t> HourOf(const Text& instant);

// Adds what another database of the register tells. A means keeps the name that it had first.
void Add(VendasByHora& sum, const VendasByHora& other);
void Add(VendasByMeio& sum, const VendasByMeio& other);

// The change of the same fiscal receipts; that of non-fiscal ones is not logged.
Amount ReadTroco(const leitura::DatabaseReading& database, const JornadaRange& range,
                 std::optional<std::int64_t> crz);

} // namespace bancada::relatorio
