// Entering and leaving the intervention modes.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/Subjects.h"

namespace bancada
{
namespace
{

// The firmware raises these itself, when the seal's switch or the technician's key says so.
template <class Cmd, EModoIntervencao MODO>
class Entrada final : public ComandoOf<Cmd>
{
  public:
    using ComandoOf<Cmd>::ComandoOf;

    void Fields(FieldVisitor&) override {}
    EOrigemCmd Origin() const override { return CMD_INTERNO; }

    BOOL FiscalCheck() override
    {
        return this->Accept(this->m_registro.CheckEntraIntervencao(MODO, this->m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        this->m_registro.EntraIntervencao(MODO, this->m_dtExecStart);
        return TRUE;
    }
};

template <class Cmd, EModoIntervencao MODO>
class Saida final : public ComandoOf<Cmd>
{
  public:
    using ComandoOf<Cmd>::ComandoOf;

    void Fields(FieldVisitor&) override {}
    EOrigemCmd Origin() const override { return CMD_INTERNO; }

    BOOL FiscalCheck() override
    {
        return this->Accept(this->m_registro.CheckSaiIntervencao(MODO, this->m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        this->m_registro.SaiIntervencao(MODO, this->m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> IntervencaoComandos()
{
    return {
        EntryOf<Entrada<CmdEntradaMILInterno, EModoIntervencao::MIL>>(
            "entrada_mil_interno", "CmdEntradaMILInterno",
            TrLater("enters the intervention mode L"), "intervencao, outros_documentos", "LX"),
        EntryOf<Saida<CmdSaidaMILInterno, EModoIntervencao::MIL>>(
            "saida_mil_interno", "CmdSaidaMILInterno", TrLater("leaves the intervention mode L"),
            "outros_documentos", "LX"),
        EntryOf<Saida<CmdSaidaMITInterno, EModoIntervencao::MIT>>(
            "saida_mit_interno", "CmdSaidaMITInterno", TrLater("leaves the intervention mode T"),
            "outros_documentos", "LX"),
        EntryOf<Entrada<CmdEntradaMITInterno, EModoIntervencao::MIT>>(
            "entrada_mit_interno", "CmdEntradaMITInterno",
            TrLater("enters the intervention mode T"), "intervencao", ""),
    };
}

} // namespace bancada
