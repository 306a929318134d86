// Sale of an item, by the plain and by the detailed command.
#include "FiscalCommands.h"
#include "bancada/Messages.h"
#include "bancada/comandos/CommonFields.h"
#include "bancada/comandos/Subjects.h"
#include "bancada/tape/FieldVisitor.h"

#include <cstring>

namespace bancada
{
namespace
{

// The two commands have the same members under the same names, at different places.
template <class Cmd>
class Venda : public ComandoOf<Cmd>
{
  public:
    explicit Venda(Registro& registro) : ComandoOf<Cmd>(registro)
    {
        std::strcpy(this->m_sUnidadeMedida, "UN");
    }

    void Fields(FieldVisitor& fields) override
    {
        fields.Text("codigo", this->m_sCodigoItem, Presence::REQUIRED, TrLater("item code"),
                    "7891000100103");
        fields.Text("descricao", this->m_sDescricao, Presence::REQUIRED,
                    TrLater("item description"), "ARROZ TIPO 1 5KG");
        fields.Quantity(
            "quantidade", m_quantidade, MAX_DECIMALS, Presence::REQUIRED,
            TrLater("quantity, 0 to 3 decimals; the decimals written are those of the sale"),
            "1.500");
        fields.Text("unidade", this->m_sUnidadeMedida, Presence::OPTIONAL,
                    TrLater("unit of measure"), "KG");
        fields.Quantity(
            "valor_unitario", m_valorUnitario, MAX_DECIMALS, Presence::REQUIRED,
            TrLater("unit price, 0 to 3 decimals; the decimals written are those of the sale"),
            "2.999");
        SiglaField(
            fields, "tributacao", this->m_sTributacao,
            {{"T", 0}, {"S", 1}, {"F", 2}, {"I", 3}, {"N", 4}, {"FS", 5}, {"IS", 6}, {"NS", 7}},
            TrLater("T an ICMS rate, S an ISSQN rate, the others a special totalizer"), "T");
        fields.Integer("indice", this->m_iIndiceTributacao, 1, MAX_ALIQUOTAS, Presence::REQUIRED,
                       TrLater("number of the rate or totalizer, from 1"), "1");
        bool arredonda = this->m_cArredTrunc == 'A';
        fields.Flag(
            "arredonda", arredonda, Presence::OPTIONAL,
            TrLater("true: the item's total is rounded half up to cents; false: it is truncated"),
            "true");
        this->m_cArredTrunc = arredonda ? 'A' : 'T';
    }

    BOOL InitCheck(CommandDataFisco*) override
    {
        this->m_iCasasDecimaisQtde = m_quantidade.decimals;
        this->m_iCasasDecimaisValor = m_valorUnitario.decimals;
        return TRUE;
    }

    BOOL FiscalCheck() override
    {
        return this->Accept(this->m_registro.CheckVendeItem(Item(), this->m_dtExecStart));
    }

    BOOL Fiscal() override
    {
        this->m_registro.VendeItem(Item(), this->m_dtExecStart);
        return TRUE;
    }

  private:
    VendaItem Item() const
    {
        VendaItem item;
        item.codigo = this->m_sCodigoItem;
        item.descricao = this->m_sDescricao;
        item.unidade = this->m_sUnidadeMedida;
        item.tributacao = this->m_sTributacao;
        item.indice = this->m_iIndiceTributacao;
        item.quantidade = m_quantidade;
        item.valorUnitario = m_valorUnitario;
        item.arredonda = this->m_cArredTrunc == 'A';
        return item;
    }

    Decimal m_quantidade;
    Decimal m_valorUnitario;
};

} // namespace

std::vector<CatalogueEntry> VendaItemComandos()
{
    return {
        EntryOf<Venda<CmdVendeItem>>("vende_item", "CmdVendeItem", TrLater("sells an item"),
                                     "item_cupom_fiscal", ""),
        EntryOf<Venda<CmdVendeItemDetalhado>>("vende_item_detalhado", "CmdVendeItemDetalhado",
                                              TrLater("sells an item by the detailed command"),
                                              "item_cupom_fiscal", ""),
    };
}

} // namespace bancada
