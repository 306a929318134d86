#include "bancada/arquivo/Reinicios.h"

#include "bancada/Messages.h"
#include "bancada/arquivo/Contadores.h"
#include "bancada/arquivo/Importador.h"
#include "bancada/arquivo/Instante.h"
#include "bancada/leitura/Counter.h"

#include <algorithm>
#include <utility>

#include <vector>

namespace bancada::arquivo
{
namespace
{

void FindReinicio(Importador& importing, std::vector<std::int32_t> leituras,
                  const std::vector<std::int32_t>& doDia, Reinicios& found)
{
    if (doDia.empty()) {
        importing.Note("E12", Tr("restarts for which there is no X reading"));
        return;
    }
    found.reinicios.insert(doDia.back());
    leituras.insert(leituras.end(), doDia.begin(), doDia.end() - 1);
    for (std::size_t i = leituras.size(); i-- > 1;) {
        if (leitura::Steps(leituras[i - 1], leituras[i]) == 1) {
            found.entradasL.insert(leituras[i - 1]);
            found.saidasL.insert(leituras[i]);
            return;
        }
    }
    importing.Note("E09", Tr("restarts without a record, which will have a row"));
}

} // namespace

std::int64_t TimeOf(const Record& intervencao)
{
    return SecondsOf(intervencao.Raw("data"), intervencao.Raw("hora"));
}

std::vector<Record> IntervencoesInOrder(const ArquivoLido& arquivo)
{
    std::vector<Record> all = arquivo.Small("E09");
    const auto key = [](const Record& record) {
        return std::make_pair(record.Integer("cro"), TimeOf(record));
    };
    std::stable_sort(all.begin(), all.end(),
                     [&key](const Record& a, const Record& b) { return key(a) < key(b); });
    // The first is the one behind the widest gap.
    std::size_t first = 0;
    std::int64_t widest = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Record& before = all[i == 0 ? all.size() - 1 : i - 1];
        const std::int64_t gap = leitura::Steps(before.Integer("cro"), all[i].Integer("cro"));
        if (gap > widest) {
            widest = gap;
            first = i;
        }
    }
    std::rotate(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(first), all.end());
    return all;
}

Reinicios FindReinicios(Importador& importing)
{
    ArquivoLido& arquivo = importing.arquivo;
    Reinicios found;
    std::set<std::int64_t> told;
    for (const Record& record : arquivo.Small("E09")) {
        told.insert(record.Integer("cro"));
    }
    std::int64_t cro = CroDoCadastro(arquivo).value_or(-1);
    std::vector<std::int32_t> leituras; // X readings since the last restart
    std::vector<std::int32_t> doDia;    // and since the last Z reduction
    for (const std::int32_t coo : arquivo.Documentos()) {
        if (arquivo.Simbolo(coo) == "LX") {
            doDia.push_back(coo);
        }
        const auto reducao = arquivo.Reducoes().find(coo);
        if (reducao == arquivo.Reducoes().end()) {
            continue;
        }
        const std::int64_t present = reducao->second.Integer("cro");
        if (cro >= 0 && present != cro && told.count(present) == 0) {
            FindReinicio(importing, leituras, doDia, found);
            leituras.clear();
        } else if (present != cro) {
            leituras.clear();
        }
        leituras.insert(leituras.end(), doDia.begin(), doDia.end());
        doDia.clear();
        cro = present;
    }
    return found;
}

} // namespace bancada::arquivo
