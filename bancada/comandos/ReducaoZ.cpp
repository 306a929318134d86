// The Z reduction.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"

namespace bancada
{
namespace
{

class ReducaoZ final : public ComandoDe<CmdReducaoZ>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeReducaoZ(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.ReducaoZ(m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeReducaoZ()
{
    return {ItemDe<ReducaoZ>("reducao_z", "CmdReducaoZ", "closes the fiscal day",
                             "reducao_z, totalizador_reducao, meio_pagamento_reducao, "
                             "outros_documentos",
                             "RZ")};
}

} // namespace bancada
