// Credit/debit vouchers and management reports.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/comandos/Campo.h"

namespace bancada
{
namespace
{

class AbreCCD final : public ComandoDe<CmdAbreCCD>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor& campos) override
    {
        CampoMeioPagamento(campos, "meio", m_iMeioPagamento,
                           "number of the payment means that the voucher is tied to");
        campos.Integer("coo", m_iCOO, 1, 999999, Presence::OPTIONAL,
                       "document number of the receipt; the receipt issued last when absent",
                       "120");
    }

    BOOL FiscalCheck() override
    {
        const int ultimo = m_registro.GetMemoria().cupom.coo;
        if (m_iCOO != 0 && m_iCOO != ultimo) {
            return Aceita("document " + std::to_string(m_iCOO) +
                          " is not the receipt issued last, which is " + std::to_string(ultimo));
        }
        return Aceita(m_registro.PodeAbreCCD(m_iMeioPagamento, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AbreCCD(m_iMeioPagamento, m_dtExecStart);
        return TRUE;
    }

  private:
    int m_iMeioPagamento = 0;
    int m_iCOO = 0; // 0 is the receipt issued last
};

class AbreEstornoCCD final : public ComandoDe<CmdAbreEstornoCCD>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeAbreEstornoCCD(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.AbreEstornoCCD(m_dtExecStart);
        return TRUE;
    }
};

class AbreGerencial final : public ComandoDe<CmdAbreGerencial>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeAbreGerencial(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.AbreGerencial(m_dtExecStart);
        return TRUE;
    }
};

class FechaCCDGerencial final : public ComandoDe<CmdFechaCCDGerencial>
{
  public:
    using ComandoDe::ComandoDe;

    void Campos(FieldVisitor&) override {}

    BOOL FiscalCheck() override { return Aceita(m_registro.PodeFechaCCDGerencial(m_dtExecStart)); }

    BOOL Fiscal() override
    {
        m_registro.FechaCCDGerencial(m_dtExecStart);
        return TRUE;
    }
};

} // namespace

std::vector<ItemCatalogo> ComandosDeComprovante()
{
    return {
        ItemDe<AbreCCD>("abre_ccd", "CmdAbreCCD", "opens a credit/debit voucher",
                        "outros_documentos", "CC"),
        ItemDe<AbreEstornoCCD>("abre_estorno_ccd", "CmdAbreEstornoCCD",
                               "opens the reversal of a credit/debit voucher", "", ""),
        ItemDe<AbreGerencial>("abre_gerencial", "CmdAbreGerencial", "opens a management report",
                              "outros_documentos", "RG"),
        ItemDe<FechaCCDGerencial>("fecha_ccd_gerencial", "CmdFechaCCDGerencial",
                                  "closes the open voucher or management report",
                                  "outros_documentos", ""),
    };
}

} // namespace bancada
