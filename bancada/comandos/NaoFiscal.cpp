// Non-fiscal receipts, withdrawals and floats.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/CommonFields.h"
#include "bancada/comandos/SignComando.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/FieldLimits.h"

namespace bancada
{
namespace
{

class AbreCNF final : public ComandoOf<CmdAbreCNF>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Text("cpf_cnpj", m_sCPF_CNPJ, Presence::OPTIONAL,
                    TrLater("consumer's CPF or CNPJ, digits only"), "52998224725");
        fields.ShortText("nome", m_sNomeConsumidor, sizeof m_sNomeConsumidor, LAW_NOME_CONSUMIDOR,
                         Presence::OPTIONAL, TrLater("consumer's name"), "Maria da Silva");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckAbreCNF(GetConsumidor(), m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AbreCNF(GetConsumidor(), m_dtExecStart);
        return TRUE;
    }

  private:
    Consumidor GetConsumidor() const { return {m_sCPF_CNPJ, m_sNomeConsumidor, ""}; }
};

class VendeItemNF final : public ComandoOf<CmdVendeItemNF>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        fields.Integer(
            "totalizador", m_iIndiceTotalizador, 1, MAX_TOTALIZADORES_NF, Presence::REQUIRED,
            TrLater("number of the non-fiscal totalizer; 1 and 2 are kept for floats and "
                    "withdrawals"),
            "3");
        fields.Money("valor", m_finValor, Presence::REQUIRED, TrLater("amount"), "15.00");
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckVendeItemNF(m_iIndiceTotalizador, m_finValor, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.VendeItemNF(m_iIndiceTotalizador, m_finValor, m_dtExecStart);
        return TRUE;
    }

  private:
    Financial m_finValor;
};

class FechaCupomNF final : public ComandoOf<CmdFechaCupomNF>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Accept(m_registro.CheckFechaCNF(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.FechaCNF(Fim());
        SignComando(*this, m_registro);
        return TRUE;
    }
};

class Sangria final : public ComandoOf<CmdSangria>
{
  public:
    using ComandoOf::ComandoOf;

    void Fields(FieldVisitor& fields) override
    {
        ChoiceField(fields, "operacao", m_eTipoOperacao,
                    {{"sangria", SANGRIA}, {"fundo_troco", FUNDO_TROCO}}, Presence::REQUIRED,
                    TrLater("cash taken out of the till, or a float put into it"), "fundo_troco");
        fields.Money("valor", m_finValor, Presence::REQUIRED, TrLater("amount"), "100.00");
        fields.Integer(
            "meio", m_iMeio, 1, MAX_MEIOS_PAGAMENTO, Presence::OPTIONAL,
            TrLater("number of the payment means that a float is put in; the first programmed "
                    "one that gives change when absent"),
            "1");
    }

    BOOL FiscalCheck() override
    {
        return Accept(
            m_registro.CheckMovimentaCaixa(m_eTipoOperacao, m_finValor, m_dtExecStart, m_iMeio));
    }

    BOOL Fiscal() override
    {
        m_registro.MovimentaCaixa(m_eTipoOperacao, m_finValor, m_dtExecStart, m_iMeio);
        return TRUE;
    }

  private:
    Financial m_finValor;
    int m_iMeio = 0; // 0 is the cash means
};

} // namespace

std::vector<CatalogueEntry> NaoFiscalComandos()
{
    return {
        EntryOf<AbreCNF>("abre_cnf", "CmdAbreCNF", TrLater("opens a non-fiscal receipt"),
                         "cupom_nf, outros_documentos", "CN"),
        EntryOf<VendeItemNF>("vende_item_nf", "CmdVendeItemNF",
                             TrLater("registers an item on a non-fiscal totalizer"),
                             "item_cupom_nf", ""),
        EntryOf<FechaCupomNF>("fecha_cupom_nf", "CmdFechaCupomNF",
                              TrLater("closes the open non-fiscal receipt"),
                              "cupom_nf, outros_documentos", ""),
        EntryOf<Sangria>("sangria", "CmdSangria",
                         TrLater("takes cash out of the till, or puts a float into it"),
                         "cupom_nf, item_cupom_nf, outros_documentos", "CN"),
    };
}

} // namespace bancada
