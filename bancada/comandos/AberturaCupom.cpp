// Opening of a fiscal receipt.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/fita/FieldVisitor.h"

namespace bancada
{
namespace
{

class AbreCupom final : public ComandoDe<CmdAbreCupom>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Text("cpf_cnpj", m_sCPF_CNPJ, Presence::OPTIONAL,
                    "consumer's CPF or CNPJ, digits only", "52998224725");
        campos.Text("nome", m_sNomeConsumidor, Presence::OPTIONAL, "consumer's name",
                    "Maria da Silva");
        campos.Text("endereco", m_sEnderecoConsumidor, Presence::OPTIONAL, "consumer's address",
                    "Rua das Laranjeiras, 10");
    }

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeAbreCupom(Quem(), m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.AbreCupom(Quem(), m_dtExecStart);
        return TRUE;
    }

  private:
    Consumidor Quem() const { return {m_sCPF_CNPJ, m_sNomeConsumidor, m_sEnderecoConsumidor}; }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeAbertura()
{
    return {ItemDe<AbreCupom>("abre_cupom", "CmdAbreCupom", "opens a fiscal receipt",
                              "cupom_fiscal", "")};
}

} // namespace bancada
