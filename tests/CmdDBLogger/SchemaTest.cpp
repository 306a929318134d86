// The tables of the logging database.
#include "FiscalCommands.h"
#include "tests/CmdDBLogger/EmptyRegister.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <utility>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// Every table, with its columns and their affinity in the order of the inserts.
const std::pair<const char*, std::vector<std::string>> TABLES[] = {
    {"outros_documentos",
     {"cont_coo INTEGER", "num_ecf INTEGER", "cont_gnf INTEGER", "cont_grg INTEGER",
      "cont_cdc INTEGER", "cont_crz INTEGER", "data_hora_inicio_emissao TEXT",
      "data_hora_fim_emissao TEXT", "id_tipo_documento TEXT"}},
    {"cupom_fiscal",
     {"cont_coo INTEGER",         "cont_ccf INTEGER",          "cont_crz INTEGER",
      "data_hora_emissao TEXT",   "cpf_cnpj_consumidor TEXT",  "nome_consumidor TEXT",
      "endereco_consumidor TEXT", "assinatura_documento TEXT", "valor_subtotal NUMERIC",
      "valor_total NUMERIC",      "tipo_desconto TEXT",        "valor_desconto NUMERIC",
      "tipo_acrescimo TEXT",      "valor_acrescimo NUMERIC",   "valor_canc_acrescimo NUMERIC",
      "valor_troco NUMERIC",      "texto_suplementar TEXT",    "id_cancelado TEXT",
      "id_cupom_adicional TEXT",  "perc_acrescimo NUMERIC",    "perc_desconto NUMERIC",
      "texto_complementar TEXT",  "chave_cupom TEXT"}},
    {"item_cupom_fiscal",
     {"seq_item INTEGER",
      "cont_coo INTEGER",
      "cod_item TEXT",
      "descricao TEXT",
      "quantidade NUMERIC",
      "aliquota TEXT",
      "un_medida TEXT",
      "valor_unitario NUMERIC",
      "tipo_acrescimo TEXT",
      "valor_acrescimo NUMERIC",
      "tipo_desconto TEXT",
      "valor_desconto NUMERIC",
      "valor_canc_acrescimo NUMERIC",
      "valor_total NUMERIC",
      "casas_decimais_quantidade INTEGER",
      "casas_decimais_valor INTEGER",
      "id_arred_trunc_valor TEXT",
      "id_cancelado TEXT",
      "perc_acrescimo NUMERIC",
      "perc_desconto NUMERIC"}},
    {"pagamento_cupom",
     {"cont_coo INTEGER", "cont_gnf INTEGER", "valor_pagamento NUMERIC", "num_parcelas INTEGER",
      "info_adicional TEXT", "indice_meio_pagamento INTEGER", "id_estornado TEXT",
      "valor_estornado NUMERIC"}},
    {"cupom_nf",
     {"cont_coo INTEGER", "cont_crz INTEGER", "cont_gnf INTEGER", "num_ecf INTEGER",
      "data_hora_emissao TEXT", "valor_subtotal NUMERIC", "valor_total_cupom NUMERIC",
      "tipo_acrescimo TEXT", "valor_acrescimo NUMERIC", "tipo_desconto TEXT",
      "valor_desconto NUMERIC", "valor_canc_acrescimo NUMERIC", "id_cancelado TEXT",
      "nome_consumidor TEXT", "cpf_cnpj_consumidor TEXT", "perc_acrescimo NUMERIC",
      "perc_desconto NUMERIC"}},
    // The percentages are no insert's; the adjustments of an item write them.
    {"item_cupom_nf",
     {"seq_item INTEGER", "cont_coo INTEGER", "indice_totalizador_nf INTEGER",
      "valor_total NUMERIC", "valor_total_liquido NUMERIC", "tipo_acrescimo TEXT",
      "valor_acrescimo NUMERIC", "tipo_desconto TEXT", "valor_desconto NUMERIC",
      "valor_canc_acrescimo NUMERIC", "id_cancelado TEXT", "perc_acrescimo NUMERIC",
      "perc_desconto NUMERIC"}},
    {"reducao_z",
     {"cont_crz INTEGER",         "num_ecf INTEGER",           "data_hora_emissao TEXT",
      "data_movimento TEXT",      "cont_coo INTEGER",          "cont_gnf INTEGER",
      "cont_cro INTEGER",         "valor_gt NUMERIC",          "valor_vb NUMERIC",
      "valor_base_icms NUMERIC",  "valor_icms NUMERIC",        "valor_desc_icms NUMERIC",
      "valor_acres_icms NUMERIC", "valor_canc_icms NUMERIC",   "valor_base_iss NUMERIC",
      "valor_iss NUMERIC",        "valor_desc_iss NUMERIC",    "valor_acres_iss NUMERIC",
      "valor_canc_iss NUMERIC",   "tempo_operacional INTEGER", "tempo_emitindo_doc INTEGER"}},
    {"totalizador_reducao",
     {"cont_crz INTEGER", "totalizador TEXT", "valor_base_calculo NUMERIC", "id_fiscal TEXT",
      "valor_imposto NUMERIC"}},
    {"meio_pagamento_reducao",
     {"indice_meio_pagamento INTEGER", "cont_crz INTEGER", "descricao_meio_pagamento TEXT",
      "valor_acumulado NUMERIC"}},
    {"intervencao",
     {"cont_cro INTEGER", "num_ecf INTEGER", "data_hora_intervencao TEXT",
      "id_tipo_intervencao TEXT", "id_perda_dados_mt TEXT"}},
    {"fita_detalhe",
     {"cont_cfd INTEGER", "num_ecf INTEGER", "data_hora_emissao TEXT", "coo_inicial INTEGER",
      "coo_final INTEGER"}},
    {"meio_pagamento",
     {"num_indice INTEGER", "num_ecf INTEGER", "descricao TEXT", "id_vinculacao_ccd TEXT"}},
    {"totalizador_nao_fiscal", {"num_indice INTEGER", "descricao TEXT"}},
    {"dados_usuario",
     {"seq_usuario INTEGER", "endereco TEXT", "nome_fantasia TEXT", "razao_social TEXT",
      "cnpj TEXT", "ie TEXT", "im TEXT", "uf TEXT", "data_hora_gravacao TEXT", "cont_cro INTEGER",
      "valor_gt NUMERIC"}},
    {"moeda", {"num_ecf INTEGER", "data_hora_gravacao TEXT", "simbolo_moeda TEXT"}},
    // The register's number is not named by the insert.
    {"dados_ecf",
     {"num_ecf INTEGER", "num_serie TEXT", "marca TEXT", "modelo TEXT", "tipo TEXT",
      "num_caixa INTEGER"}},
    {"versao_sb", {"num_ecf INTEGER", "versao TEXT"}},
};

class Schema : public LoggerTest
{
  protected:
    // Calls `check` with table, column and affinity of every column.
    template <class Check>
    void ForEachColumn(Check check)
    {
        for (const auto& [table, columns] : TABLES) {
            for (const std::string& column : columns) {
                const std::size_t blank = column.find(' ');
                SCOPED_TRACE(std::string(table) + "." + column);
                check(std::string(table), column.substr(0, blank), column.substr(blank + 1));
            }
        }
    }
};

TEST_F(Schema, TablesAreThoseThatTheModuleNeeds)
{
    std::vector<std::string> tables;
    for (const auto& table : TABLES) {
        tables.emplace_back(table.first);
    }
    EXPECT_THAT(Rows("SELECT name FROM sqlite_master WHERE type = 'table'"),
                ::testing::UnorderedElementsAreArray(tables));
}

TEST_F(Schema, ColumnsStandInTheOrderOfTheInsertsWithTheirAffinity)
{
    for (const auto& [table, columns] : TABLES) {
        EXPECT_EQ(Rows("SELECT name || ' ' || type FROM pragma_table_info('" + std::string(table) +
                       "') ORDER BY cid"),
                  columns)
            << table;
    }
}

TEST_F(Schema, NumbersAreNumbersAndTextsAreTextsWhateverTheQuotes)
{
    ForEachColumn(
        [&](const std::string& table, const std::string& column, const std::string& affinity) {
            Execute("INSERT INTO " + table + " (" + column + ") VALUES ('12')");
            EXPECT_THAT(Rows("SELECT typeof(" + column + ") FROM " + table),
                        ElementsAre(affinity == "TEXT" ? "text" : "integer"));
            Execute("DELETE FROM " + table);
        });
}

TEST_F(Schema, QuotedAndUnquotedNumbersFindTheSameRows)
{
    int columnsCompared = 0;
    ForEachColumn(
        [&](const std::string& table, const std::string& column, const std::string& affinity) {
            if (affinity == "TEXT") {
                return;
            }
            ++columnsCompared;
            const std::string count = "SELECT count(*) FROM " + table + " WHERE " + column + " = ";
            for (const std::string stored : {"123", "'123'"}) {
                Execute("INSERT INTO " + table + " (" + column + ") VALUES (" + stored + ")");
                EXPECT_THAT(Rows(count + "123"), ElementsAre("1"));
                EXPECT_THAT(Rows(count + "'123'"), ElementsAre("1"));
                EXPECT_THAT(Rows(count + "'0123'"), ElementsAre("1"));
                EXPECT_THAT(Rows(count + "124"), ElementsAre("0"));
                Execute("DELETE FROM " + table);
            }
        });
    EXPECT_THAT(Rows("SELECT count(*) FROM sqlite_master AS tables,"
                     " pragma_table_info(tables.name) AS columns"
                     " WHERE tables.type = 'table' AND columns.type <> 'TEXT'"),
                ElementsAre(std::to_string(columnsCompared)));
}

TEST_F(Schema, MoneyTextIsStoredAsANumber)
{
    Execute("INSERT INTO pagamento_cupom (valor_pagamento, valor_estornado) VALUES (10.50,2.25)");
    EXPECT_THAT(Rows("SELECT valor_pagamento - valor_estornado FROM pagamento_cupom"),
                ElementsAre("8.25"));
    EXPECT_THAT(Rows("SELECT count(*) FROM pagamento_cupom WHERE valor_pagamento = '10.5'"),
                ElementsAre("1"));
}

TEST_F(Schema, DocumentNumberMayComeTwice)
{
    for (const char* table : {"outros_documentos", "cupom_fiscal", "cupom_nf", "pagamento_cupom",
                              "item_cupom_fiscal", "item_cupom_nf"}) {
        Execute(std::string("INSERT INTO ") + table + " (cont_coo) VALUES (7), (7)");
        EXPECT_THAT(Rows(std::string("SELECT cont_coo FROM ") + table), ElementsAre("7", "7"));
    }
}

TEST_F(Schema, FirstRegisterGetsNumber1)
{
    Execute("INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES "
            "('S','M','O','T',0)");
    EXPECT_THAT(Rows("SELECT num_ecf FROM dados_ecf"), ElementsAre("1"));
}

TEST_F(Schema, ReceiptWhoseInsertFailedIsUpdatedWithoutErrorAndWithoutEffect)
{
    Execute("INSERT INTO cupom_fiscal (cont_coo, id_cancelado) VALUES (76,'N')");
    Execute("INSERT INTO item_cupom_fiscal (cont_coo, seq_item, id_cancelado) VALUES (76,1,'N')");
    ScriptEmptyRegister(fiscal);
    fiscal.numbers["Cupom_GetTipoCupom()"] = CUPOM_FISCAL;
    fiscal.SetCounter(COUNTER_COO, 77);

    auto open = NewCommand<CmdAbreCupom>();
    SetText(open.m_sNomeConsumidor, "D'Oeste");
    open.DBLogger(db);
    ASSERT_THAT(LogEntries(), SizeIs(2));
    Forget();

    auto cancelItem = NewCommand<CmdCancelaItem>();
    cancelItem.m_iNumeroItem = 1;
    EXPECT_EQ(cancelItem.DBLogger(db), TRUE);
    EXPECT_EQ(NewCommand<CmdFechaCupom>().DBLogger(db), TRUE);
    EXPECT_EQ(NewCommand<CmdCancelaCupomFiscalNfEmEmissao>().DBLogger(db), TRUE);

    EXPECT_THAT(Statements(), SizeIs(3));
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_THAT(Rows("SELECT cont_coo, id_cancelado, valor_total FROM cupom_fiscal"),
                ElementsAre("76|N|NULL"));
    EXPECT_THAT(Rows("SELECT cont_coo, id_cancelado FROM item_cupom_fiscal"), ElementsAre("76|N"));
}

} // namespace
