// Credit/debit vouchers and management reports.
#include "FiscalCommands.h"
#include "bancada/comandos/Assuntos.h"
#include "bancada/comandos/Campo.h"
#include "bancada/registro/Registro.h"

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
    }

    BOOL FiscalCheck() override
    {
        return Aceita(m_registro.PodeAbreCCD(m_iMeioPagamento, m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        m_registro.AbreCCD(m_iMeioPagamento, m_dtExecStart);
        return TRUE;
    }

  private:
    int m_iMeioPagamento = 0;
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
