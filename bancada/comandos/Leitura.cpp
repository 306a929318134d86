// X and fiscal-memory readings.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/comandos/Campo.h"

namespace bancada
{
namespace
{

class LeituraX final : public ComandoDe<CmdLeituraX>
{
  public:
    explicit LeituraX(Registro& registro) : ComandoDe(registro) { m_eMidia = IMPRESSAO; }

    void Campos(FieldVisitor& campos) override
    {
        CampoEscolha(
            campos, "midia", m_eMidia,
            {{"impressao", IMPRESSAO}, {"arquivo", ARQUIVO}, {"arquivo_dll", ARQUIVO_DLL}},
            Presence::OPTIONAL,
            "where the reading goes; a reading written to a file (arquivo) is no document: it takes no number and has no row",
            "impressao");
    }

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeLeituraX(m_eMidia, m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.LeituraX(m_eMidia, m_dtExecStart);
        return TRUE;
    }
};

class LeituraMF final : public ComandoDe<CmdLeituraMF>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeLeituraMF(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.LeituraMF(m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeLeitura()
{
    return {
        ItemDe<LeituraX>("leitura_x", "CmdLeituraX", "issues an X reading", "outros_documentos",
                         "LX"),
        ItemDe<LeituraMF>("leitura_mf", "CmdLeituraMF", "issues a fiscal-memory reading",
                          "outros_documentos", "MF"),
    };
}

} // namespace bancada
