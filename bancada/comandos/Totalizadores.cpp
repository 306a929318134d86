// Programming of rates, special totalizers, payment means and non-fiscal totalizers.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/CommonFields.h"
#include "bancada/comandos/Subjects.h"

namespace bancada
{
namespace
{

class InsereAliquota final : public ComandoOf<CmdInsereAliquota>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        SiglaField(fields, "tributacao", m_sTributacao, {{"T", 0}, {"S", 1}},
                   TrLater("T an ICMS rate, S an ISSQN rate"), "T");
        fields.Integer("indice", m_iIndice, 1, MAX_ALIQUOTAS, Presence::OPTIONAL,
                       TrLater("number of the rate; the first free one when absent"), "1");
        fields.Percent("percentual", m_iCentesimos, Presence::REQUIRED, TrLater("the rate"),
                       "18.00");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckProgramaAliquota(m_sTributacao, m_iIndice, m_iCentesimos));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaAliquota(m_sTributacao, m_iIndice, m_iCentesimos);
        return TRUE;
    }

  private:
    char m_sTributacao[4] = {};
    int m_iIndice = 0;
    int m_iCentesimos = 0;
};

template <class Cmd, bool HABILITADO>
class Habilitacao final : public ComandoOf<Cmd>
{
  public:
    using ComandoOf<Cmd>::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        SiglaField(fields, "codigo", m_sCodigo,
                   {{"F", 0}, {"I", 1}, {"N", 2}, {"FS", 3}, {"IS", 4}, {"NS", 5}},
                   TrLater("code of the special totalizer"), "F");
        fields.Integer("numero", m_iNumero, 1, MAX_ESPECIAIS_POR_CODIGO, Presence::REQUIRED,
                       TrLater("its number"), "1");
    }

    BOOL FiscalCheck() override
    {
        return this->Accept(
            this->m_registro.CheckHabilitaTotalizador(m_sCodigo, m_iNumero, HABILITADO));
    }

    BOOL Fiscal() override
    {
        this->m_registro.HabilitaTotalizador(m_sCodigo, m_iNumero, HABILITADO);
        return TRUE;
    }

  private:
    char m_sCodigo[4] = {};
    int m_iNumero = 0;
};

class InsereMeioPagamento final : public ComandoOf<CmdInsereMeiosPagamento>
{
  public:
    explicit InsereMeioPagamento(Registro& registro) : ComandoOf(registro)
    {
        m_eVinculacaoCCD = SEM_CCD;
    }

    void Fields(FieldVisitor& fields) override
    {
        fields.Integer("indice", m_iIndice, 1, MAX_MEIOS_PAGAMENTO, Presence::REQUIRED,
                       TrLater("number of the payment means"), "2");
        fields.Text("descricao", m_sDescricao, Presence::REQUIRED, TrLater("its name"),
                    "CARTAO CREDITO");
        bool vinculado = m_eVinculacaoCCD == COM_CCD;
        fields.Flag("vinculado_ccd", vinculado, Presence::OPTIONAL,
                    TrLater("it may be tied to a credit/debit voucher, and so gives no change"),
                    "true");
        m_eVinculacaoCCD = vinculado ? COM_CCD : SEM_CCD;
    }

    BOOL FiscalCheck() override
    {
        return Accept(
            m_registro.CheckProgramaMeioPagamento(m_iIndice, m_sDescricao, m_eVinculacaoCCD));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaMeioPagamento(m_iIndice, m_sDescricao, m_eVinculacaoCCD);
        return TRUE;
    }
};

class InsereRegOpeNF final : public ComandoOf<CmdInsereRegOpeNF>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Integer("indice", m_iIndice, 1, MAX_TOTALIZADORES_NF, Presence::REQUIRED,
                       TrLater("number of the totalizer; 1 takes the floats and 2 the withdrawals"),
                       "3");
        fields.Text("descricao", m_sDescricao, Presence::REQUIRED, TrLater("its name"),
                    "RECARGA CELULAR");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckProgramaTotalizadorNF(m_iIndice, m_sDescricao));
    }

    BOOL Fiscal() override
    {
        m_registro.ProgramaTotalizadorNF(m_iIndice, m_sDescricao);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> TotalizadoresComandos()
{
    return {
        EntryOf<InsereAliquota>("insere_aliquota", "CmdInsereAliquota",
                                TrLater("programs a tax rate"), "", ""),
        EntryOf<Habilitacao<CmdHabilitaTotalizadores, true>>(
            "habilita_totalizadores", "CmdHabilitaTotalizadores",
            TrLater("enables a special totalizer"), "", ""),
        EntryOf<Habilitacao<CmdDesabilitaTotalizadores, false>>(
            "desabilita_totalizadores", "CmdDesabilitaTotalizadores",
            TrLater("disables a special totalizer"), "", ""),
        EntryOf<InsereMeioPagamento>("insere_meio_pagamento", "CmdInsereMeiosPagamento",
                                     TrLater("programs a payment means"), "meio_pagamento", ""),
        EntryOf<InsereRegOpeNF>("insere_reg_ope_nf", "CmdInsereRegOpeNF",
                                TrLater("programs a non-fiscal totalizer"),
                                "totalizador_nao_fiscal", ""),
    };
}

} // namespace bancada
