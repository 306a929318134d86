// Reprints from the detail tape.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/fita/FieldVisitor.h"

namespace bancada
{
namespace
{

class ReimprimeMFD final : public ComandoDe<CmdReimprimeMFD>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Integer("coo_inicial", m_iCooInicial, 1, 999999, Presence::REQUIRED,
                       "document number of the first document", "10");
        campos.Integer("coo_final", m_iCooFinal, 1, 999999, Presence::REQUIRED,
                       "document number of the last document", "12");
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeReimprimeMFD(m_iCooInicial, m_iCooFinal, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.ReimprimeMFD(m_iCooInicial, m_iCooFinal, m_dtExecStart);
        return TRUE;
    }

    // The logger records the counter plus 1, so the reprint is counted after it.
    BOOL FiscalPostPrint() override
    {
        m_registro.ConcluiReimpressao();
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeFitaDetalhe()
{
    return {ItemDe<ReimprimeMFD>("reimprime_mfd", "CmdReimprimeMFD",
                                 "reprints documents from the detail tape", "fita_detalhe", "")};
}

} // namespace bancada
