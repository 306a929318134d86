// Opening of a fiscal receipt.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/FieldLimits.h"
#include "bancada/tape/FieldVisitor.h"

namespace bancada
{
namespace
{

class AbreCupom final : public ComandoOf<CmdAbreCupom>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Text("cpf_cnpj", m_sCPF_CNPJ, Presence::OPTIONAL,
                    TrLater("consumer's CPF or CNPJ, digits only"), "52998224725");
        fields.ShortText("nome", m_sNomeConsumidor, sizeof m_sNomeConsumidor, LAW_NOME_CONSUMIDOR,
                         Presence::OPTIONAL, TrLater("consumer's name"), "Maria da Silva");
        fields.Text("endereco", m_sEnderecoConsumidor, Presence::OPTIONAL,
                    TrLater("consumer's address"), "Rua das Laranjeiras, 10");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckAbreCupom(GetConsumidor(), m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AbreCupom(GetConsumidor(), m_dtExecStart);
        return TRUE;
    }

  private:
    Consumidor GetConsumidor() const
    {
        return {m_sCPF_CNPJ, m_sNomeConsumidor, m_sEnderecoConsumidor};
    }
};

} // namespace

std::vector<CatalogueEntry> AberturaCupomComandos()
{
    return {EntryOf<AbreCupom>("abre_cupom", "CmdAbreCupom", TrLater("opens a fiscal receipt"),
                               "cupom_fiscal", "")};
}

} // namespace bancada
