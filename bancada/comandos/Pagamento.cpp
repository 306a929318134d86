// Payments and their reversal.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/comandos/Campo.h"

namespace bancada
{
namespace
{

class EfetuaPagamento final : public ComandoDe<CmdEfetuaPagamento>
{
  public:
    explicit EfetuaPagamento(Registro& registro) : ComandoDe(registro) { m_iNumParcelas = 1; }

    void Campos(FieldVisitor& campos) override
    {
        CampoMeioPagamento(campos, "meio", m_iMeioPagamento, "number of the payment means, from 1");
        campos.Money("valor", m_finValor, Presence::REQUIRED, "amount paid", "20.00");
        CampoParcelas(campos, m_iNumParcelas);
        CampoInfoAdicional(campos, m_sInfoAdicional);
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeEfetuaPagamento(m_iMeioPagamento, m_finValor, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.EfetuaPagamento(m_iMeioPagamento, m_finValor, m_dtExecStart);
        return TRUE;
    }
};

class EstornaMeioPagamento final : public ComandoDe<CmdEstornaMeioPagamento>
{
  public:
    explicit EstornaMeioPagamento(Registro& registro) : ComandoDe(registro) { m_iNumParcelas = 1; }

    void Campos(FieldVisitor& campos) override
    {
        CampoMeioPagamento(campos, "origem", m_iMeioPagamentoOrigem,
                           "number of the means that the amount is taken from");
        CampoMeioPagamento(campos, "destino", m_iMeioPagamentoDestino,
                           "number of the means that the amount goes to");
        campos.Money("valor", m_finValor, Presence::REQUIRED, "amount moved", "20.00");
        CampoParcelas(campos, m_iNumParcelas);
        CampoInfoAdicional(campos, m_sInfoAdicional);
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeEstornaMeioPagamento(
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

std::vector<ItemCatalogo> ComandosDePagamento()
{
    return {
        ItemDe<EfetuaPagamento>("efetua_pagamento", "CmdEfetuaPagamento",
                                "pays the open receipt, wholly or in part", "pagamento_cupom", ""),
        ItemDe<EstornaMeioPagamento>("estorna_meio_pagamento", "CmdEstornaMeioPagamento",
                                     "moves an amount paid from one payment means to another",
                                     "pagamento_cupom", ""),
    };
}

} // namespace bancada
