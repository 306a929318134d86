// Programming of the register's own identity: shop and till number, serial number, currency.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/fita/FieldVisitor.h"

namespace bancada
{
namespace
{

class ProgramaLoja final : public ComandoDe<CmdProgramaLoja>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Integer("numero", m_iNumero, 1, 9999, Presence::REQUIRED, "number of the shop", "1");
    }

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeProgramaLoja(m_iNumero)); }

    BOOL Fiscal() override
    {
        m_registro.ProgramaLoja(m_iNumero);
        return TRUE;
    }

  private:
    int m_iNumero = 0;
};

class ProgramaSequenciaECF final : public ComandoDe<CmdProgramaSequenciaECF>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Integer("numero", m_iNumCaixa, 1, 999, Presence::REQUIRED, "till number", "2");
    }

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeProgramaSequenciaECF(m_iNumCaixa)); }

    BOOL Fiscal() override
    {
        m_registro.ProgramaSequenciaECF(m_iNumCaixa);
        return TRUE;
    }
};

class ProgramaNrSerie final : public ComandoDe<CmdProgramaNrSerie>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Text("marca", m_sMarca, Presence::REQUIRED, "make", "MARCA");
        campos.Text("modelo", m_sModelo, Presence::REQUIRED, "model", "MODELO X");
        campos.Text("tipo", m_sTipo, Presence::REQUIRED, "type of register", "ECF-IF");
        campos.Text("num_serie", m_sNumSerie, Presence::REQUIRED, "serial number", "MX0123456789");
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeProgramaNrSerie(m_sMarca, m_sModelo, m_sTipo, m_sNumSerie));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaNrSerie(m_sMarca, m_sModelo, m_sTipo, m_sNumSerie);
        return TRUE;
    }
};

class ProgramaMoeda final : public ComandoDe<CmdProgramaMoeda>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Text("simbolo", m_sSimboloMoeda, Presence::REQUIRED, "currency symbol", "R$");
    }

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeProgramaMoeda(m_sSimboloMoeda)); }

    BOOL Fiscal() override
    {
        m_registro.ProgramaMoeda(m_sSimboloMoeda);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeIdentidade()
{
    return {
        ItemDe<ProgramaLoja>("programa_loja", "CmdProgramaLoja", "programs the shop's number", "",
                             ""),
        ItemDe<ProgramaSequenciaECF>("programa_sequencia_ecf", "CmdProgramaSequenciaECF",
                                     "programs the till number", "dados_ecf", ""),
        ItemDe<ProgramaNrSerie>("programa_nr_serie", "CmdProgramaNrSerie",
                                "programs the register's identity", "dados_ecf, versao_sb", ""),
        ItemDe<ProgramaMoeda>("programa_moeda", "CmdProgramaMoeda", "programs the currency symbol",
                              "moeda", ""),
    };
}

} // namespace bancada
