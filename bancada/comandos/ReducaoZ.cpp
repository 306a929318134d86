// The Z reduction.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/Subjects.h"

namespace bancada
{
namespace
{

class ReducaoZ final : public ComandoOf<CmdReducaoZ>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Accept(m_registro.CheckReducaoZ(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.ReducaoZ(m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> ReducaoZComandos()
{
    return {EntryOf<ReducaoZ>("reducao_z", "CmdReducaoZ", TrLater("closes the fiscal day"),
                              "reducao_z, totalizador_reducao, meio_pagamento_reducao, "
                              "outros_documentos",
                              "RZ")};
}

} // namespace bancada
