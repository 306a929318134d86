// Closing of a fiscal receipt.
#include "FiscalCommands.h"
#include "bancada/comandos/Assinatura.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/fita/FieldVisitor.h"

namespace bancada
{
namespace
{

class FechaCupom final : public ComandoDe<CmdFechaCupom>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Text("mensagem", m_sMsgPromocional, Presence::OPTIONAL,
                    "closing message; \"CNPJ/CPF consumidor: \" in it names the consumer",
                    "Obrigado! CNPJ/CPF consumidor: 529.982.247-25");
        bool adicional = m_bCupomAdicional != FALSE;
        campos.Flag("adicional", adicional, Presence::OPTIONAL, "an additional receipt is issued",
                    "true");
        m_bCupomAdicional = adicional ? TRUE : FALSE;
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeFechaCupom(m_sMsgPromocional, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.FechaCupom(m_sMsgPromocional, m_dtExecStart);
        Assina(*this, m_registro);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeFechamento()
{
    return {ItemDe<FechaCupom>("fecha_cupom", "CmdFechaCupom", "closes the open fiscal receipt",
                               "cupom_fiscal, item_cupom_fiscal", "")};
}

} // namespace bancada
