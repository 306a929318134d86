// Entering and leaving the intervention modes.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"

namespace bancada
{
namespace
{

// The firmware raises these itself, when the seal's switch or the technician's key says so.
template <class Cmd, EModoIntervencao MODO>
class Entrada final : public ComandoDe<Cmd>
{
  public:
    using ComandoDe<Cmd>::ComandoDe;

    void Campos(FieldVisitor&) override {}
    EOrigemCmd Origem() const override { return CMD_INTERNO; }

    BOOL FiscalCheck() override
    {
        return this->Aceita(this->m_registro.PodeEntraIntervencao(MODO, this->m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        this->m_registro.EntraIntervencao(MODO, this->m_dtExecStart);
        return TRUE;
    }
};

template <class Cmd, EModoIntervencao MODO>
class Saida final : public ComandoDe<Cmd>
{
  public:
    using ComandoDe<Cmd>::ComandoDe;

    void Campos(FieldVisitor&) override {}
    EOrigemCmd Origem() const override { return CMD_INTERNO; }

    BOOL FiscalCheck() override
    {
        return this->Aceita(this->m_registro.PodeSaiIntervencao(MODO, this->m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        this->m_registro.SaiIntervencao(MODO, this->m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeIntervencao()
{
    return {
        ItemDe<Entrada<CmdEntradaMILInterno, EModoIntervencao::MIL>>(
            "entrada_mil_interno", "CmdEntradaMILInterno", "enters the intervention mode L",
            "intervencao, outros_documentos", "LX"),
        ItemDe<Saida<CmdSaidaMILInterno, EModoIntervencao::MIL>>(
            "saida_mil_interno", "CmdSaidaMILInterno", "leaves the intervention mode L",
            "outros_documentos", "LX"),
        ItemDe<Saida<CmdSaidaMITInterno, EModoIntervencao::MIT>>(
            "saida_mit_interno", "CmdSaidaMITInterno", "leaves the intervention mode T",
            "outros_documentos", "LX"),
        ItemDe<Entrada<CmdEntradaMITInterno, EModoIntervencao::MIT>>(
            "entrada_mit_interno", "CmdEntradaMITInterno", "enters the intervention mode T",
            "intervencao", ""),
    };
}

} // namespace bancada
