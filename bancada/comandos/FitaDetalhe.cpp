// Reprints from the detail tape.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/FieldVisitor.h"

namespace bancada
{
namespace
{

class ReimprimeMFD final : public ComandoOf<CmdReimprimeMFD>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Integer("coo_inicial", m_iCooInicial, 1, MAX_CONTADOR, Presence::REQUIRED,
                       TrLater("document number of the first document"), "10");
        fields.Integer("coo_final", m_iCooFinal, 1, MAX_CONTADOR, Presence::REQUIRED,
                       TrLater("document number of the last document"), "12");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckReimprimeMFD(m_iCooInicial, m_iCooFinal, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.ReimprimeMFD(m_iCooInicial, m_iCooFinal, m_dtExecStart);
        return TRUE;
    }

    // The logger records the counter plus 1, so the reprint is counted after it.
    BOOL FiscalPostPrint() override
    {
        m_registro.FinishReimprimeMFD();
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> FitaDetalheComandos()
{
    return {EntryOf<ReimprimeMFD>("reimprime_mfd", "CmdReimprimeMFD",
                                  TrLater("reprints documents from the detail tape"),
                                  "fita_detalhe", "")};
}

} // namespace bancada
