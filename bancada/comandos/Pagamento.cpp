// Payments and their reversal.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/CommonFields.h"
#include "bancada/comandos/Subjects.h"

namespace bancada
{
namespace
{

class EfetuaPagamento final : public ComandoOf<CmdEfetuaPagamento>
{
  public:
    explicit EfetuaPagamento(Registro& registro) : ComandoOf(registro) { m_iNumParcelas = 1; }

    void Fields(FieldVisitor& fields) override
    {
        MeioPagamentoField(fields, "meio", m_iMeioPagamento,
                           TrLater("number of the payment means, from 1"));
        fields.Money("valor", m_finValor, Presence::REQUIRED, TrLater("amount paid"), "20.00");
        ParcelasField(fields, m_iNumParcelas);
        InfoAdicionalField(fields, m_sInfoAdicional);
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckEfetuaPagamento(m_iMeioPagamento, m_finValor, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.EfetuaPagamento(m_iMeioPagamento, m_finValor, m_dtExecStart);
        return TRUE;
    }
};

class EstornaMeioPagamento final : public ComandoOf<CmdEstornaMeioPagamento>
{
  public:
    explicit EstornaMeioPagamento(Registro& registro) : ComandoOf(registro) { m_iNumParcelas = 1; }

    void Fields(FieldVisitor& fields) override
    {
        MeioPagamentoField(fields, "origem", m_iMeioPagamentoOrigem,
                           TrLater("number of the means that the amount is taken from"));
        MeioPagamentoField(fields, "destino", m_iMeioPagamentoDestino,
                           TrLater("number of the means that the amount goes to"));
        fields.Money("valor", m_finValor, Presence::REQUIRED, TrLater("amount moved"), "20.00");
        ParcelasField(fields, m_iNumParcelas);
        InfoAdicionalField(fields, m_sInfoAdicional);
    }

    BOOL FiscalCheck() override
    {
        return Accept(m_registro.CheckEstornaMeioPagamento(
            m_iMeioPagamentoOrigem, m_iMeioPagamentoDestino, m_finValor, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.EstornaMeioPagamento(m_iMeioPagamentoOrigem, m_iMeioPagamentoDestino, m_finValor,
                                        m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<CatalogueEntry> PagamentoComandos()
{
    return {
        EntryOf<EfetuaPagamento>("efetua_pagamento", "CmdEfetuaPagamento",
                                 TrLater("pays the open receipt, wholly or in part"),
                                 "pagamento_cupom", ""),
        EntryOf<EstornaMeioPagamento>(
            "estorna_meio_pagamento", "CmdEstornaMeioPagamento",
            TrLater("moves an amount paid from one payment means to another"), "pagamento_cupom",
            ""),
    };
}

} // namespace bancada
