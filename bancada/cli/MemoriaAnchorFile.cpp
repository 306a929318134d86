#include "bancada/cli/MemoriaAnchorFile.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/leitura/Query.h"
#include "bancada/memoria/FileStorage.h"
#include "bancada/memoria/MemoriaFile.h"
#include "bancada/registro/TextForms.h"

#include <filesystem>
#include <limits>
#include <memory>
#include <optional>

namespace bancada
{
namespace
{

// Evidence: whatever settling would write is dropped.
class SealedStorage final : public FileStorage
{
  public:
    void Replace(const std::string&, std::string_view) override {}
    void Create(const std::string&, std::string_view, const std::string&) override {}
    void Append(std::string_view) override {}
    void Remove(const std::string&) override {}
};

leitura::Amount AmountOf(const Financial& valor)
{
    std::string digits = ValorToText(valor);
    digits.erase(digits.find('.'), 1);
    return {std::stoll(digits), 2};
}

} // namespace

conferencia::MemoriaAnchor ReadMemoriaAnchor(const std::string& path,
                                             const leitura::DatabaseReading& database)
{
    if (!std::filesystem::exists(path)) {
        throw Unusable(Tr("%1: there is no such memory", {path}));
    }
    MemoriaFile file(path, std::make_unique<SealedStorage>(),
                     std::numeric_limits<std::size_t>::max());
    leitura::Query version(database, "PRAGMA user_version");
    const std::int64_t number = version.Next() ? version.ReadInteger("user_version").Value() : 0;
    std::optional<std::int64_t> command;
    if (file.HasProgress()) {
        command = file.GetProgress().confirmed;
        if (number >= *command && number <= std::numeric_limits<std::int32_t>::max()) {
            // A command that never reached the database was never replied.
            file.Settle(static_cast<std::int32_t>(number));
        }
    }
    const Memoria& memoria = file.State();
    const auto counter = [&memoria](FISCALDATA_COUNTER_INDEX index) {
        return static_cast<std::int64_t>(memoria.contadores[static_cast<std::size_t>(index)]);
    };
    conferencia::MemoriaAnchor anchor;
    anchor.coo = counter(COUNTER_COO);
    anchor.ccf = counter(COUNTER_CCF);
    anchor.gnf = counter(COUNTER_GNF);
    anchor.crz = counter(COUNTER_CRZ);
    anchor.cfd = counter(COUNTER_CFD);
    anchor.cdc = counter(COUNTER_CDC);
    anchor.grg = counter(COUNTER_GRG);
    anchor.gtUltimaReducao = AmountOf(memoria.gtUltimaRZ);
    anchor.gtInicial = AmountOf(memoria.gtInicial);
    anchor.numSerie = memoria.ecf.numSerie;
    anchor.cnpj = memoria.contribuinte.cnpj;
    anchor.command = command;
    anchor.razaoSocial = memoria.contribuinte.razaoSocial;
    return anchor;
}

} // namespace bancada
