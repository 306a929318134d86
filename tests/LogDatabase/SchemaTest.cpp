// The schema that the library carries, and its version.
#include "LogDatabase/Schema.h"
#include "tests/LogDatabase/LogDatabaseTest.h"

namespace
{

using namespace log_database;

class Schema : public LogDatabaseTest
{
  protected:
    // A database as it was made before versions: the same tables, and no word of what it is.
    void MakeVersionZero() const
    {
        Plain(std::string("PRAGMA page_size = 2048; PRAGMA journal_mode = WAL;") + LOG_SCHEMA +
              "INSERT INTO versao_sb VALUES (1, 'v'); PRAGMA user_version = 5");
    }
    // The file, and whatever stands beside it.
    std::string AllFiles() const
    {
        std::string all;
        for (const char* name : {"db", "db-wal", "db-journal"}) {
            all += folder.Has(name) ? name + (":" + folder.Read(name)) : "";
        }
        return all;
    }
    std::string Version() const { return Rows("PRAGMA application_id"); }
};

TEST_F(Schema, ListsEveryColumnOfEveryTable)
{
    Plain(LOG_SCHEMA);
    std::string columns;
    for (int i = 0; i < LOG_COLUMN_COUNT; ++i) {
        columns += (columns.empty() ? "" : " ") + std::string(LOG_COLUMNS[i].table) + "." +
                   LOG_COLUMNS[i].column;
    }
    EXPECT_EQ(
        columns,
        Rows("SELECT t.name || '.' || c.name FROM sqlite_schema AS t,"
             " pragma_table_info(t.name) AS c WHERE t.type = 'table' ORDER BY t.name, c.cid"));
    std::string tables;
    for (int i = 0; i < LOG_TABLE_COUNT; ++i) {
        tables += (tables.empty() ? "" : " ") + std::string(LOG_TABLES[i]);
        EXPECT_EQ(TableIndex(LOG_TABLES[i]), i);
    }
    EXPECT_EQ(tables, Rows("SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY name"));
    EXPECT_EQ(TableIndex("sqlite_schema"), LOG_TABLE_COUNT);
    EXPECT_EQ(TableIndex(""), LOG_TABLE_COUNT);
    EXPECT_EQ(TableIndex("zzz"), LOG_TABLE_COUNT);
}

// What databases in the field are: whoever changes a table, a type or an index makes another
// version.
TEST_F(Schema, IsTheFirstVersionToTheLastColumn)
{
    Plain(LOG_SCHEMA);
    const std::vector<std::string> tables = {
        "outros_documentos: cont_coo INTEGER, num_ecf INTEGER, cont_gnf INTEGER, cont_grg"
        " INTEGER, cont_cdc INTEGER, cont_crz INTEGER, data_hora_inicio_emissao TEXT,"
        " data_hora_fim_emissao TEXT, id_tipo_documento TEXT",
        "cupom_fiscal: cont_coo INTEGER, cont_ccf INTEGER, cont_crz INTEGER,"
        " data_hora_emissao TEXT, cpf_cnpj_consumidor TEXT, nome_consumidor TEXT,"
        " endereco_consumidor TEXT, assinatura_documento TEXT, valor_subtotal NUMERIC,"
        " valor_total NUMERIC, tipo_desconto TEXT, valor_desconto NUMERIC, tipo_acrescimo"
        " TEXT, valor_acrescimo NUMERIC, valor_canc_acrescimo NUMERIC, valor_troco NUMERIC,"
        " texto_suplementar TEXT, id_cancelado TEXT, id_cupom_adicional TEXT, perc_acrescimo"
        " NUMERIC, perc_desconto NUMERIC, texto_complementar TEXT, chave_cupom TEXT",
        "item_cupom_fiscal: seq_item INTEGER, cont_coo INTEGER, cod_item TEXT, descricao"
        " TEXT, quantidade NUMERIC, aliquota TEXT, un_medida TEXT, valor_unitario NUMERIC,"
        " tipo_acrescimo TEXT, valor_acrescimo NUMERIC, tipo_desconto TEXT, valor_desconto"
        " NUMERIC, valor_canc_acrescimo NUMERIC, valor_total NUMERIC,"
        " casas_decimais_quantidade INTEGER, casas_decimais_valor INTEGER,"
        " id_arred_trunc_valor TEXT, id_cancelado TEXT, perc_acrescimo NUMERIC, perc_desconto"
        " NUMERIC",
        "pagamento_cupom: cont_coo INTEGER, cont_gnf INTEGER, valor_pagamento NUMERIC,"
        " num_parcelas INTEGER, info_adicional TEXT, indice_meio_pagamento INTEGER,"
        " id_estornado TEXT, valor_estornado NUMERIC",
        "cupom_nf: cont_coo INTEGER, cont_crz INTEGER, cont_gnf INTEGER, num_ecf INTEGER,"
        " data_hora_emissao TEXT, valor_subtotal NUMERIC, valor_total_cupom NUMERIC,"
        " tipo_acrescimo TEXT, valor_acrescimo NUMERIC, tipo_desconto TEXT, valor_desconto"
        " NUMERIC, valor_canc_acrescimo NUMERIC, id_cancelado TEXT, nome_consumidor TEXT,"
        " cpf_cnpj_consumidor TEXT, perc_acrescimo NUMERIC, perc_desconto NUMERIC",
        "item_cupom_nf: seq_item INTEGER, cont_coo INTEGER, indice_totalizador_nf INTEGER,"
        " valor_total NUMERIC, valor_total_liquido NUMERIC, tipo_acrescimo TEXT,"
        " valor_acrescimo NUMERIC, tipo_desconto TEXT, valor_desconto NUMERIC,"
        " valor_canc_acrescimo NUMERIC, id_cancelado TEXT, perc_acrescimo NUMERIC DEFAULT 0,"
        " perc_desconto NUMERIC DEFAULT 0",
        "reducao_z: cont_crz INTEGER, num_ecf INTEGER, data_hora_emissao TEXT, data_movimento"
        " TEXT, cont_coo INTEGER, cont_gnf INTEGER, cont_cro INTEGER, valor_gt NUMERIC,"
        " valor_vb NUMERIC, valor_base_icms NUMERIC, valor_icms NUMERIC, valor_desc_icms"
        " NUMERIC, valor_acres_icms NUMERIC, valor_canc_icms NUMERIC, valor_base_iss NUMERIC,"
        " valor_iss NUMERIC, valor_desc_iss NUMERIC, valor_acres_iss NUMERIC, valor_canc_iss"
        " NUMERIC, tempo_operacional INTEGER, tempo_emitindo_doc INTEGER",
        "totalizador_reducao: cont_crz INTEGER, totalizador TEXT, valor_base_calculo NUMERIC,"
        " id_fiscal TEXT, valor_imposto NUMERIC",
        "meio_pagamento_reducao: indice_meio_pagamento INTEGER, cont_crz INTEGER,"
        " descricao_meio_pagamento TEXT, valor_acumulado NUMERIC",
        "intervencao: cont_cro INTEGER, num_ecf INTEGER, data_hora_intervencao TEXT,"
        " id_tipo_intervencao TEXT, id_perda_dados_mt TEXT",
        "fita_detalhe: cont_cfd INTEGER, num_ecf INTEGER, data_hora_emissao TEXT, coo_inicial"
        " INTEGER, coo_final INTEGER",
        "meio_pagamento: num_indice INTEGER, num_ecf INTEGER, descricao TEXT,"
        " id_vinculacao_ccd TEXT",
        "totalizador_nao_fiscal: num_indice INTEGER, descricao TEXT",
        "dados_usuario: seq_usuario INTEGER, endereco TEXT, nome_fantasia TEXT, razao_social"
        " TEXT, cnpj TEXT, ie TEXT, im TEXT, uf TEXT, data_hora_gravacao TEXT, cont_cro"
        " INTEGER, valor_gt NUMERIC",
        "moeda: num_ecf INTEGER, data_hora_gravacao TEXT, simbolo_moeda TEXT",
        "dados_ecf: num_ecf INTEGER PK, num_serie TEXT, marca TEXT, modelo TEXT, tipo TEXT,"
        " num_caixa INTEGER",
        "versao_sb: num_ecf INTEGER, versao TEXT"};
    const std::vector<std::string> indexes = {
        "idx_outros_documentos: cont_coo",
        "idx_cupom_fiscal: cont_coo",
        "idx_item_cupom_fiscal: cont_coo, seq_item",
        "idx_pagamento_cupom: cont_coo, indice_meio_pagamento",
        "idx_cupom_nf: cont_coo",
        "idx_item_cupom_nf: cont_coo, seq_item",
        "idx_intervencao: cont_cro",
        "idx_fita_detalhe: cont_cfd",
        "idx_meio_pagamento: num_indice",
        "idx_totalizador_nao_fiscal: num_indice",
        "idx_dados_usuario: seq_usuario"};
    EXPECT_EQ(Lines("SELECT t.name || ':' || (SELECT group_concat(' ' || name || ' ' || type"
                    " || iif(pk, ' PK', '') || iif(\"notnull\", ' NOT NULL', '')"
                    " || coalesce(' DEFAULT ' || dflt_value, ''))"
                    " FROM (SELECT * FROM pragma_table_info(t.name) ORDER BY cid))"
                    " FROM sqlite_schema AS t WHERE type = 'table' ORDER BY rowid"),
              tables);
    EXPECT_EQ(Lines("SELECT i.name || ':' || (SELECT group_concat(' ' || name)"
                    " FROM (SELECT * FROM pragma_index_info(i.name) ORDER BY seqno))"
                    " FROM sqlite_schema AS i WHERE type = 'index' ORDER BY rowid"),
              indexes);
    EXPECT_EQ(Lines("SELECT type || ' ' || name FROM sqlite_schema"
                    " WHERE type NOT IN ('table', 'index')"),
              std::vector<std::string>());
}

// Of whatever table: a row in one alone is enough.
TEST_F(Schema, ARowOfAnyTableIsSeenWhereAnEmptyDatabaseIsAskedFor)
{
    LogDatabaseOptions options = Brief();
    options.onlyEmpty = true;
    for (int i = 0; i < LOG_TABLE_COUNT; ++i) {
        const std::string table = LOG_TABLES[i];
        ASSERT_EQ(Open(), LogFault::NONE);
        EXPECT_EQ(Command({"INSERT INTO " + table + " DEFAULT VALUES"}).state, LogState::KEPT);
        EXPECT_EQ(Open(options), LogFault::HOLDS_ROWS) << table;
        EXPECT_EQ(database.Text(), "it already holds rows (table " + table + ")");
        database.Close();
        Plain("DELETE FROM " + table);
    }
    EXPECT_EQ(Open(options), LogFault::NONE) << database.Text();
}

TEST_F(Schema, ADatabaseOfBeforeVersionsIsUpgradedAndKeepsItsRowsItsNumberAndItsPageSize)
{
    MakeVersionZero();
    ASSERT_EQ(Version(), "0");
    ASSERT_EQ(Open(), LogFault::NONE) << database.Text();
    EXPECT_EQ(database.CommandNumber(), 5);
    EXPECT_EQ(Version(), std::to_string(0x45434601));
    EXPECT_EQ(Rows("PRAGMA page_size"), "2048");
    EXPECT_EQ(Rows("PRAGMA user_version"), "5");
    EXPECT_EQ(Rows(), "1");
}

TEST_F(Schema, ANewerVersionIsRefusedWithBothNumbers)
{
    MakeVersionZero();
    Plain("PRAGMA application_id = " + std::to_string(0x45434602));
    const std::string before = folder.Read("db");
    EXPECT_EQ(Open(), LogFault::NEWER);
    EXPECT_STREQ(database.Text(),
                 "its schema is of version 2, and this program knows those up to 1");
    EXPECT_EQ(folder.Read("db"), before);
}

TEST_F(Schema, AnUpgradeThatFailsLeavesTheFileAndItsJournalAsTheyWere)
{
    MakeVersionZero();
    Plain("PRAGMA journal_mode = DELETE");
    const std::string before = AllFiles();
    Other other(Path());
    other.Run("BEGIN IMMEDIATE");
    EXPECT_EQ(Open(), LogFault::LOCKED);
    EXPECT_STREQ(database.Text(), "database is locked");
    other.Run("ROLLBACK");
    database.Close();
    EXPECT_EQ(AllFiles(), before);
    ASSERT_EQ(Open(), LogFault::NONE);
    EXPECT_TRUE(database.HasWriteAheadLog());
    EXPECT_EQ(Version(), std::to_string(0x45434601));
}

TEST_F(Schema, AnUpgradeThatCannotBeWrittenLeavesTheDatabaseAsItWas)
{
    MakeVersionZero();
    Other other(Path());
    other.Run("BEGIN IMMEDIATE");
    EXPECT_EQ(Open(), LogFault::LOCKED);
    other.Run("COMMIT");
    EXPECT_EQ(Version(), "0");
    // The next command finds it free.
    EXPECT_EQ(NumberedCommand(6, 2).state, LogState::KEPT);
    EXPECT_EQ(Version(), std::to_string(0x45434601));
    EXPECT_EQ(Rows(), "1 2");
}

TEST_F(Schema, AColumnThatIsMissingIsNamed)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    database.Close();
    Plain("ALTER TABLE item_cupom_nf DROP COLUMN perc_desconto");
    EXPECT_EQ(Open(), LogFault::NOT_A_LOG);
    EXPECT_STREQ(database.Text(),
                 "it is not a logging database: it has no column item_cupom_nf.perc_desconto");
}

TEST_F(Schema, AnOlderVersionIsAskedForWhatItPromisesAlone)
{
    Plain("CREATE TABLE t (a)");
    Other db(Path());
    const LogColumn columns[] = {{"t", "a", 0}, {"t", "b", 2}, {"u", "c", 3}};
    Reason reason;
    const auto check = [&](int version) {
        reason = {};
        return CheckColumns(db.Handle(), columns, 3, version, reason);
    };
    EXPECT_EQ(check(0), LogFault::NONE);
    EXPECT_EQ(check(1), LogFault::NONE);
    EXPECT_EQ(check(2), LogFault::NOT_A_LOG);
    EXPECT_STREQ(reason.text, "it is not a logging database: it has no column t.b");
    db.Run("ALTER TABLE t ADD COLUMN b");
    EXPECT_EQ(check(2), LogFault::NONE);
    EXPECT_EQ(check(3), LogFault::NOT_A_LOG);
    EXPECT_STREQ(reason.text, "it is not a logging database: it has no column u.c");
}

TEST_F(Schema, ProgramsInTheDatabaseAreRefused)
{
    ASSERT_EQ(Open(), LogFault::NONE);
    database.Close();
    Plain("CREATE VIEW spy AS SELECT 1");
    EXPECT_EQ(Open(), LogFault::NOT_A_LOG);
    EXPECT_STREQ(database.Text(), "it is not a logging database: it has the view spy");
}

TEST_F(Schema, AnEmptyDatabaseOfAnotherApplicationIsRefused)
{
    Plain("PRAGMA application_id = 7");
    EXPECT_EQ(Open(), LogFault::NOT_A_LOG);
    EXPECT_STREQ(database.Text(), "it is a database of another application (application_id 7)");
    EXPECT_EQ(Rows("SELECT count(*) FROM sqlite_schema"), "0");
}

} // namespace
