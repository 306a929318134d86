// Non-fiscal receipts, withdrawals and floats.
#include "FiscalCommands.h"
#include "bancada/comandos/Assinatura.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/comandos/Campo.h"

namespace bancada
{
namespace
{

class AbreCNF final : public ComandoDe<CmdAbreCNF>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Text("cpf_cnpj", m_sCPF_CNPJ, Presence::OPTIONAL,
                    "consumer's CPF or CNPJ, digits only", "52998224725");
        campos.Text("nome", m_sNomeConsumidor, Presence::OPTIONAL, "consumer's name",
                    "Maria da Silva");
    }

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeAbreCNF(Quem(), m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.AbreCNF(Quem(), m_dtExecStart);
        return TRUE;
    }

  private:
    Consumidor Quem() const { return {m_sCPF_CNPJ, m_sNomeConsumidor, ""}; }
};

class VendeItemNF final : public ComandoDe<CmdVendeItemNF>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        campos.Integer("totalizador", m_iIndiceTotalizador, 1, MAX_TOTALIZADORES_NF,
                       Presence::REQUIRED,
                       "number of the non-fiscal totalizer; 1 and 2 are kept for floats and "
                       "withdrawals",
                       "3");
        campos.Money("valor", m_finValor, Presence::REQUIRED, "amount", "15.00");
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeVendeItemNF(m_iIndiceTotalizador, m_finValor, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.VendeItemNF(m_iIndiceTotalizador, m_finValor, m_dtExecStart);
        return TRUE;
    }

  private:
    Financial m_finValor;
};

class FechaCupomNF final : public ComandoDe<CmdFechaCupomNF>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeFechaCNF(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.FechaCNF(m_dtExecStart);
        Assina(*this, m_registro);
        return TRUE;
    }
};

class Sangria final : public ComandoDe<CmdSangria>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        CampoEscolha(campos, "operacao", m_eTipoOperacao,
                     {{"sangria", SANGRIA}, {"fundo_troco", FUNDO_TROCO}}, Presence::REQUIRED,
                     "cash taken out of the till, or a float put into it", "sangria");
        campos.Money("valor", m_finValor, Presence::REQUIRED, "amount", "100.00");
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeMovimentaCaixa(m_eTipoOperacao, m_finValor, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.MovimentaCaixa(m_eTipoOperacao, m_finValor, m_dtExecStart);
        return TRUE;
    }

  private:
    Financial m_finValor;
};

} // namespace

std::vector<ItemCatalogo> ComandosNaoFiscais()
{
    return {
        ItemDe<AbreCNF>("abre_cnf", "CmdAbreCNF", "opens a non-fiscal receipt",
                        "cupom_nf, outros_documentos", "CN"),
        ItemDe<VendeItemNF>("vende_item_nf", "CmdVendeItemNF",
                            "registers an item on a non-fiscal totalizer", "item_cupom_nf", ""),
        ItemDe<FechaCupomNF>("fecha_cupom_nf", "CmdFechaCupomNF",
                             "closes the open non-fiscal receipt", "cupom_nf, outros_documentos",
                             ""),
        ItemDe<Sangria>("sangria", "CmdSangria",
                        "takes cash out of the till, or puts a float into it",
                        "cupom_nf, item_cupom_nf, outros_documentos", "CN"),
    };
}

} // namespace bancada
