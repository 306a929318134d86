#include "bancada/comandos/Catalogo.h"

#include "bancada/comandos/Assuntos.h"

#include <algorithm>

namespace bancada
{

const std::vector<ItemCatalogo>& Catalogo()
{
    static const std::vector<ItemCatalogo> catalogo = [] {
        std::vector<ItemCatalogo> todos;
        for (const std::vector<ItemCatalogo>& assunto :
             {ComandosDeAbertura(), ComandosDeVenda(), ComandosDeAjusteDeItem(),
              ComandosDeAjusteDeSubtotal(), ComandosDePagamento(), ComandosDeFechamento(),
              ComandosDeCancelamento(), ComandosNaoFiscais(), ComandosDeLeitura(),
              ComandosDeReducaoZ(), ComandosDeComprovante(), ComandosDeIntervencao(),
              ComandosDeFitaDetalhe(), ComandosDeTotalizadores(), ComandosDeProprietario(),
              ComandosDeIdentidade()}) {
            todos.insert(todos.end(), assunto.begin(), assunto.end());
        }
        std::sort(todos.begin(), todos.end(),
                  [](const ItemCatalogo& a, const ItemCatalogo& b) { return a.codigo < b.codigo; });
        return todos;
    }();
    return catalogo;
}

const ItemCatalogo* ProcuraComando(std::string_view nome)
{
    const std::vector<ItemCatalogo>& todos = Catalogo();
    const auto achado = std::find_if(todos.begin(), todos.end(),
                                     [&](const ItemCatalogo& item) { return item.nome == nome; });
    return achado == todos.end() ? nullptr : &*achado;
}

} // namespace bancada
