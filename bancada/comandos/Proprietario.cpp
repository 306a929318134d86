// Programming of the register's owner.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/FieldVisitor.h"

namespace bancada
{
namespace
{

class ProgramaUsuario final : public ComandoOf<CmdProgramaUsuario>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Text("razao_social", m_razaoSocial, MAX_CONTRIBUINTE_TEXT, Presence::REQUIRED,
                    TrLater("company name"), "MERCEARIA DO BAIRRO LTDA");
        fields.Text("nome_fantasia", m_nomeFantasia, MAX_CONTRIBUINTE_TEXT, Presence::REQUIRED,
                    TrLater("trade name"), "MERCEARIA DO BAIRRO");
        fields.Text("endereco", m_endereco, MAX_CONTRIBUINTE_TEXT, Presence::REQUIRED,
                    TrLater("address"), "RUA DAS ACACIAS, 100 - CENTRO");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckProgramaUsuario(m_razaoSocial, m_nomeFantasia, m_endereco));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaUsuario(m_razaoSocial, m_nomeFantasia, m_endereco);
        return TRUE;
    }

  private:
    std::string m_razaoSocial;
    std::string m_nomeFantasia;
    std::string m_endereco;
};

class ProgramaCNPJ_IE_IM final : public ComandoOf<CmdProgramaCNPJ_IE_IM>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Text("cnpj", m_sCNPJ, Presence::REQUIRED,
                    TrLater("CNPJ, 14 digits with its check digits"), "11222333000181");
        fields.Text("ie", m_sIE, Presence::REQUIRED, TrLater("state registration"), "110042490114");
        fields.Text("im", m_sIM, Presence::REQUIRED,
                    TrLater("municipal registration; may be empty"), "12345678");
        fields.Text("uf", m_sUF, Presence::REQUIRED, TrLater("state, two letters"), "SP");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckProgramaCNPJ_IE_IM(m_sCNPJ, m_sIE, m_sIM, m_sUF));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaCNPJ_IE_IM(m_sCNPJ, m_sIE, m_sIM, m_sUF);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> ProprietarioComandos()
{
    return {
        EntryOf<ProgramaUsuario>("programa_usuario", "CmdProgramaUsuario",
                                 TrLater("programs the owner's names and address"), "dados_usuario",
                                 ""),
        EntryOf<ProgramaCNPJ_IE_IM>("programa_cnpj_ie_im", "CmdProgramaCNPJ_IE_IM",
                                    TrLater("programs the owner's registrations"), "dados_usuario",
                                    ""),
    };
}

} // namespace bancada
