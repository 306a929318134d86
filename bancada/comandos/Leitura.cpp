// X and fiscal-memory readings.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/CommonFields.h"
#include "bancada/comandos/Subjects.h"

namespace bancada
{
namespace
{

class LeituraX final : public ComandoOf<CmdLeituraX>
{
  public:
    explicit LeituraX(Registro& registro) : ComandoOf(registro) { m_eMidia = IMPRESSAO; }

    void Fields(FieldVisitor& fields) override
    {
        ChoiceField(
            fields, "midia", m_eMidia,
            {{"impressao", IMPRESSAO}, {"arquivo", ARQUIVO}, {"arquivo_dll", ARQUIVO_DLL}},
            Presence::OPTIONAL,
            TrLater(
                "where the reading goes; a reading written to a file (arquivo) is no document: it takes no number and has no row"),
            "impressao");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckLeituraX(m_eMidia, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.LeituraX(m_eMidia, m_dtExecStart);
        return TRUE;
    }
};

class LeituraMF final : public ComandoOf<CmdLeituraMF>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Accept(m_registro.CheckLeituraMF(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.LeituraMF(m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> LeituraComandos()
{
    return {
        EntryOf<LeituraX>("leitura_x", "CmdLeituraX", TrLater("issues an X reading"),
                          "outros_documentos", "LX"),
        EntryOf<LeituraMF>("leitura_mf", "CmdLeituraMF", TrLater("issues a fiscal-memory reading"),
                           "outros_documentos", "MF"),
    };
}

} // namespace bancada
