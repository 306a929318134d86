// The sale of an item, by either command.
#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"
#include "libs/CharTools.h"

namespace
{

// The parameters of a sale, under the names that they have in both commands.
struct Venda {
    template <class CmdVenda>
    explicit Venda(CmdVenda& cmd)
        : command(cmd), m_sCodigoItem(cmd.m_sCodigoItem), m_sDescricao(cmd.m_sDescricao),
          m_sTributacao(cmd.m_sTributacao), m_iIndiceTributacao(cmd.m_iIndiceTributacao),
          m_sUnidadeMedida(cmd.m_sUnidadeMedida), m_iCasasDecimaisQtde(cmd.m_iCasasDecimaisQtde),
          m_iCasasDecimaisValor(cmd.m_iCasasDecimaisValor), m_cArredTrunc(cmd.m_cArredTrunc)
    {
    }

    Command& command;
    const char (&m_sCodigoItem)[15];
    const char (&m_sDescricao)[235];
    const char (&m_sTributacao)[4];
    const int m_iIndiceTributacao;
    const char (&m_sUnidadeMedida)[11];
    const int m_iCasasDecimaisQtde;
    const int m_iCasasDecimaisValor;
    const char m_cArredTrunc;
};

// The two commands differ in what is done before and in the text of an ISSQN rate; the statement is
// the same.
BOOL LogVenda(const Venda& venda, const TaxCodePattern& issqnPattern, sqlite3* db)
{
    Statement<SQL_SIZE_CUPOM> insert;

    FiscalDataController* const FDController = venda.command.FDController;
    const int item = FDController->Cupom_GetQuantidadeDeItens() - 1; // the one just registered

    insert.Begin("INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, "
                 "quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, "
                 "valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, "
                 "valor_total, casas_decimais_quantidade, casas_decimais_valor, "
                 "id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (");
    insert.Integer("%d,", item + 1);                                // seq_item
    insert.Integer("%d,", FDController->Contador_Get(COUNTER_COO)); // cont_coo
    insert.Text("'%s',", venda.m_sCodigoItem);                      // cod_item
    insert.Text("'%s',", venda.m_sDescricao);                       // descricao
    FDController->Cupom_GetItemQtdeStr(item, insert.aux, AUX_SIZE);
    insert.DecimalText("%s,", insert.aux); // quantidade
    const int number = venda.m_iIndiceTributacao;
    int rate = 0;
    switch (venda.m_sTributacao[0]) {
    case 'T':
        rate = FDController->Totalizador_GetTotPercTrib(BC_IND_FISCAL, BC_IND_FISCAL_BI_IND_ICMS,
                                                        number - 1);
        insert.TaxCode("'%02dT%02d.%02d',", number, rate); // aliquota
        break;
    case 'S':
        rate = FDController->Totalizador_GetTotPercTrib(BC_IND_FISCAL, BC_IND_FISCAL_BI_IND_ISSQN,
                                                        number - 1);
        insert.TaxCode(issqnPattern, number, rate); // aliquota
        break;
    default:
        insert.Text("'%s", venda.m_sTributacao); // aliquota
        insert.Integer("%d',", number);
        break;
    }
    insert.Text("'%s',", venda.m_sUnidadeMedida); // un_medida
    FDController->Cupom_GetItemValorUnitarioStr(item, insert.aux, AUX_SIZE);
    insert.DecimalText("%s,", insert.aux); // valor_unitario
    insert.Piece("'V',"                    // tipo_acrescimo
                 "0,"                      // valor_acrescimo
                 "'V',"                    // tipo_desconto
                 "0,"                      // valor_desconto
                 "0,");                    // valor_canc_acrescimo
    const Financial total = FDController->Cupom_GetItemValorTotal(item);
    if (venda.m_iCasasDecimaisValor == 3) {
        insert.MoneyText("%s,", total, FIN_STR_1, 3); // valor_total
    } else {
        insert.MoneyText("%s,", total, FIN_STR_DEFAULT, 2); // valor_total
    }
    insert.Integer("%d,", venda.m_iCasasDecimaisQtde);  // casas_decimais_quantidade
    insert.Integer("%d,", venda.m_iCasasDecimaisValor); // casas_decimais_valor
    insert.Character("'%c',", venda.m_cArredTrunc);     // id_arred_trunc_valor
    insert.Piece("'N',"                                 // id_cancelado
                 "0,"                                   // perc_acrescimo
                 "0)");                                 // perc_desconto
    return insert.Execute(venda.command, db);
}

} // namespace

BOOL CmdVendeItem::DBLogger(sqlite3* db)
{
    // Required to be done in the command's own description, which keeps the backquotes.
    CharReplace(m_sDescricao, sizeof m_sDescricao, '\'', '`');
    return LogVenda(Venda(*this), "'%02dS%02d.%02d',", db);
}

BOOL CmdVendeItemDetalhado::DBLogger(sqlite3* db)
{
    // Required text: the detailed command writes an ISSQN rate with the letter of an ICMS rate, and
    // takes its description as it is.
    return LogVenda(Venda(*this), "'%02dT%02d.%02d',", db);
}
