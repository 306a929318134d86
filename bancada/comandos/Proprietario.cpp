// Programming of the register's owner.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/fita/FieldVisitor.h"

namespace bancada
{
namespace
{

class ProgramaUsuario final : public ComandoDe<CmdProgramaUsuario>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Text("razao_social", m_razaoSocial, MAX_TEXTO, Presence::REQUIRED, "company name",
                    "MERCEARIA DO BAIRRO LTDA");
        campos.Text("nome_fantasia", m_nomeFantasia, MAX_TEXTO, Presence::REQUIRED, "trade name",
                    "MERCEARIA DO BAIRRO");
        campos.Text("endereco", m_endereco, MAX_TEXTO, Presence::REQUIRED, "address",
                    "RUA DAS ACACIAS, 100 - CENTRO");
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeProgramaUsuario(m_razaoSocial, m_nomeFantasia, m_endereco));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaUsuario(m_razaoSocial, m_nomeFantasia, m_endereco);
        return TRUE;
    }

  private:
    static constexpr int MAX_TEXTO = 120;

    std::string m_razaoSocial;
    std::string m_nomeFantasia;
    std::string m_endereco;
};

class ProgramaCNPJ_IE_IM final : public ComandoDe<CmdProgramaCNPJ_IE_IM>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Text("cnpj", m_sCNPJ, Presence::REQUIRED, "CNPJ, 14 digits with its check digits",
                    "11222333000181");
        campos.Text("ie", m_sIE, Presence::REQUIRED, "state registration", "110042490114");
        campos.Text("im", m_sIM, Presence::REQUIRED, "municipal registration; may be empty",
                    "12345678");
        campos.Text("uf", m_sUF, Presence::REQUIRED, "state, two letters", "SP");
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeProgramaCNPJ_IE_IM(m_sCNPJ, m_sIE, m_sIM, m_sUF));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaCNPJ_IE_IM(m_sCNPJ, m_sIE, m_sIM, m_sUF);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeProprietario()
{
    return {
        ItemDe<ProgramaUsuario>("programa_usuario", "CmdProgramaUsuario",
                                "programs the owner's names and address", "dados_usuario", ""),
        ItemDe<ProgramaCNPJ_IE_IM>("programa_cnpj_ie_im", "CmdProgramaCNPJ_IE_IM",
                                   "programs the owner's registrations", "dados_usuario", ""),
    };
}

} // namespace bancada
