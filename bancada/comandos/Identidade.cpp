// Programming of the register's own identity: shop and till number, serial number, currency.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/FieldLimits.h"
#include "bancada/tape/FieldVisitor.h"

namespace bancada
{
namespace
{

class ProgramaLoja final : public ComandoOf<CmdProgramaLoja>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Integer("numero", m_iNumero, 1, MAX_NUMERO_LOJA, Presence::REQUIRED,
                       TrLater("number of the shop"), "1");
    }

    BOOL FiscalCheck() override { return Accept(m_registro.CheckProgramaLoja(m_iNumero)); }

    BOOL Fiscal() override
    {
        m_registro.ProgramaLoja(m_iNumero);
        return TRUE;
    }

  private:
    int m_iNumero = 0;
};

class ProgramaSequenciaECF final : public ComandoOf<CmdProgramaSequenciaECF>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Integer("numero", m_iNumCaixa, 1, MAX_SEQUENCIA_ECF, Presence::REQUIRED,
                       TrLater("till number"), "2");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckProgramaSequenciaECF(m_iNumCaixa));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaSequenciaECF(m_iNumCaixa);
        return TRUE;
    }
};

class ProgramaNrSerie final : public ComandoOf<CmdProgramaNrSerie>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.ShortText("marca", m_sMarca, sizeof m_sMarca, LAW_MARCA, Presence::REQUIRED,
                         TrLater("make"), "MARCA");
        fields.Text("modelo", m_sModelo, Presence::REQUIRED, TrLater("model"), "MODELO X");
        fields.Text("tipo", m_sTipo, Presence::REQUIRED, TrLater("type of register"), "ECF-IF");
        fields.Text("num_serie", m_sNumSerie, Presence::REQUIRED, TrLater("serial number"),
                    "MX0123456789");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckProgramaNrSerie(m_sMarca, m_sModelo, m_sTipo, m_sNumSerie));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaNrSerie(m_sMarca, m_sModelo, m_sTipo, m_sNumSerie);
        return TRUE;
    }
};

class ProgramaMoeda final : public ComandoOf<CmdProgramaMoeda>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Text("simbolo", m_sSimboloMoeda, Presence::REQUIRED, TrLater("currency symbol"),
                    "R$");
    }

    BOOL FiscalCheck() override { return Accept(m_registro.CheckProgramaMoeda(m_sSimboloMoeda)); }

    BOOL Fiscal() override
    {
        m_registro.ProgramaMoeda(m_sSimboloMoeda);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> IdentidadeComandos()
{
    return {
        EntryOf<ProgramaLoja>("programa_loja", "CmdProgramaLoja",
                              TrLater("programs the shop's number"), "", ""),
        EntryOf<ProgramaSequenciaECF>("programa_sequencia_ecf", "CmdProgramaSequenciaECF",
                                      TrLater("programs the till number"), "dados_ecf", ""),
        EntryOf<ProgramaNrSerie>("programa_nr_serie", "CmdProgramaNrSerie",
                                 TrLater("programs the register's identity"),
                                 "dados_ecf, versao_sb", ""),
        EntryOf<ProgramaMoeda>("programa_moeda", "CmdProgramaMoeda",
                               TrLater("programs the currency symbol"), "moeda", ""),
    };
}

} // namespace bancada
