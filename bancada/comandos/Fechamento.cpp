// Closing of a fiscal receipt.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/SignComando.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/FieldVisitor.h"

namespace bancada
{
namespace
{

class FechaCupom final : public ComandoOf<CmdFechaCupom>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Text("mensagem", m_sMsgPromocional, Presence::OPTIONAL,
                    TrLater("closing message; \"CNPJ/CPF consumidor: \" in it names the consumer"),
                    "Obrigado! CNPJ/CPF consumidor: 529.982.247-25");
        bool adicional = m_bCupomAdicional != FALSE;
        fields.Flag("adicional", adicional, Presence::OPTIONAL,
                    TrLater("an additional receipt is issued"), "true");
        m_bCupomAdicional = adicional ? TRUE : FALSE;
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckFechaCupom(m_sMsgPromocional, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.FechaCupom(m_sMsgPromocional, Fim());
        SignComando(*this, m_registro);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> FechamentoComandos()
{
    return {EntryOf<FechaCupom>("fecha_cupom", "CmdFechaCupom",
                                TrLater("closes the open fiscal receipt"),
                                "cupom_fiscal, item_cupom_fiscal", "")};
}

} // namespace bancada
