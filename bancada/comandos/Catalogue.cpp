#include "bancada/comandos/Catalogue.h"

#include "bancada/Messages.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/TapeFields.h"

#include <algorithm>

namespace bancada
{

const std::vector<CatalogueEntry>& Catalogue()
{
    static const std::vector<CatalogueEntry> catalogue = [] {
        std::vector<CatalogueEntry> all;
        for (const std::vector<CatalogueEntry>& subject :
             {AberturaCupomComandos(), VendaItemComandos(), AjusteItemComandos(),
              AjusteSubtotalComandos(), PagamentoComandos(), FechamentoComandos(),
              CancelamentoComandos(), NaoFiscalComandos(), LeituraComandos(), ReducaoZComandos(),
              ComprovanteComandos(), IntervencaoComandos(), FitaDetalheComandos(),
              TotalizadoresComandos(), ProprietarioComandos(), IdentidadeComandos()}) {
            all.insert(all.end(), subject.begin(), subject.end());
        }
        std::sort(all.begin(), all.end(),
                  [](const CatalogueEntry& a, const CatalogueEntry& b) { return a.code < b.code; });
        return all;
    }();
    return catalogue;
}

const CatalogueEntry* FindComando(std::string_view name)
{
    const std::vector<CatalogueEntry>& all = Catalogue();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const CatalogueEntry& item) { return item.name == name; });
    return found == all.end() ? nullptr : &*found;
}

std::unique_ptr<ComandoBancada> ReadComando(const TapeCommand& line, Registro& registro,
                                            const FaultSink& sink)
{
    const CatalogueEntry* entry = FindComando(line.name);
    if (entry == nullptr) {
        ReportFault(sink, line.namePlace, Tr("there is no command \"%1\"", {line.name}));
        return nullptr;
    }
    std::unique_ptr<ComandoBancada> command = entry->make(registro);
    TapeFields fields(line, sink);
    command->Fields(fields);
    fields.Finish();
    return command;
}

} // namespace bancada
