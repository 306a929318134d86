#include "bancada/comandos/CancelaAberto.h"

#include "bancada/registro/Checks.h"

namespace bancada
{

const CatalogueEntry* FindCancelamento(const Registro& registro)
{
    if (IsCupomOpen(registro.GetMemoria())) {
        return FindComando("cancela_cupom_em_emissao");
    }
    if (registro.GetMemoria().documento != EDocumentoAberto::NENHUM) {
        return FindComando("fecha_ccd_gerencial");
    }
    return nullptr;
}

} // namespace bancada
