// Every statement of the module against the tables, and the module's sources against this list.
#include "tests/CmdDBLogger/Documento.h"
#include "tests/CmdDBLogger/LoggerTest.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sqlite3.h>

namespace
{

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

// Values have no comma, so that they can be counted.
const std::string INSERTS[] =
    {
        "INSERT INTO outros_documentos (cont_coo, num_ecf, cont_gnf, cont_grg, cont_cdc, cont_crz, data_hora_inicio_emissao, data_hora_fim_emissao, id_tipo_documento) VALUES (1,1,0,0,0,1,'2026-03-02 08:15:30','2026-03-02 08:15:30','LX')",
        "INSERT INTO cupom_fiscal (cont_coo, cont_ccf, cont_crz, data_hora_emissao, cpf_cnpj_consumidor, nome_consumidor, endereco_consumidor, assinatura_documento, valor_subtotal, valor_total, tipo_desconto, valor_desconto, tipo_acrescimo, valor_acrescimo, valor_canc_acrescimo, valor_troco, texto_suplementar, id_cancelado, id_cupom_adicional, perc_acrescimo, perc_desconto, texto_complementar, chave_cupom) VALUES (1,1,1,'2026-03-02 08:15:30',' ',' ',' ',' ',0,0,'V',0,'V',0,0,0,' ','N','N',0,0,' ',' ')",
        "INSERT INTO item_cupom_fiscal (seq_item, cont_coo, cod_item, descricao, quantidade, aliquota, un_medida, valor_unitario, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, valor_total, casas_decimais_quantidade, casas_decimais_valor, id_arred_trunc_valor, id_cancelado, perc_acrescimo, perc_desconto) VALUES (1,1,'789','ARROZ',1.000,'01T18.00','KG',5.25,'V',0,'V',0,0,5.25,3,2,'A','N',0,0)",
        "INSERT INTO pagamento_cupom (cont_coo, cont_gnf, valor_pagamento, num_parcelas, info_adicional, indice_meio_pagamento, id_estornado, valor_estornado) VALUES (1,0,10.00,1,'',0,'N',0)",
        "INSERT INTO cupom_nf (cont_coo, cont_crz, cont_gnf, num_ecf, data_hora_emissao, valor_subtotal, valor_total_cupom, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado, nome_consumidor, cpf_cnpj_consumidor, perc_acrescimo, perc_desconto) VALUES (1,1,1,1,'2026-03-02 08:15:30',0,0,'V',0,'V',0,0,'N','','',0,0)",
        "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, tipo_acrescimo, valor_acrescimo, tipo_desconto, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1,1,3,2.50,2.50,'V',0,'V',0,0,'N')",
        "INSERT INTO item_cupom_nf (seq_item, cont_coo, indice_totalizador_nf, valor_total, valor_total_liquido, valor_acrescimo, valor_desconto, valor_canc_acrescimo, id_cancelado) VALUES (1,1,2,2.50,2.50,0,0,0,'N')",
        "INSERT INTO reducao_z (cont_crz, num_ecf, data_hora_emissao, data_movimento, cont_coo, cont_gnf, cont_cro, valor_gt, valor_vb, valor_base_icms, valor_icms, valor_desc_icms, valor_acres_icms, valor_canc_icms, valor_base_iss, valor_iss, valor_desc_iss, valor_acres_iss, valor_canc_iss, tempo_operacional, tempo_emitindo_doc) VALUES (1,1,'2026-03-02 20:00:00','2026-03-02 00:00:00',9,0,1,100.00,10.00,10.00,1.80,0.00,0.00,0.00,0.00,0.00,0.00,0.00,0.00,600,36000)",
        "INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, id_fiscal, valor_imposto) VALUES(1,'01T18.00',10.00,'S',1.80)",
        "INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, id_fiscal, valor_imposto) VALUES('F1',1,10.00,'S',0)",
        "INSERT INTO meio_pagamento_reducao(indice_meio_pagamento, cont_crz, descricao_meio_pagamento, valor_acumulado) VALUES(0,1,'Dinheiro',10.00)",
        "INSERT INTO intervencao (cont_cro, num_ecf, data_hora_intervencao, id_tipo_intervencao, id_perda_dados_mt) VALUES (1,1,'2026-03-02 08:15:30','L','N')",
        "INSERT INTO fita_detalhe (cont_cfd, num_ecf, data_hora_emissao, coo_inicial, coo_final) VALUES (1,1,'2026-03-02 08:15:30',1,9)",
        "INSERT INTO meio_pagamento (num_indice, num_ecf, descricao, id_vinculacao_ccd) VALUES (2,1,'Cartao','S')",
        "INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (5,'Gas')",
        "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'e','n','r','2026-03-02 08:15:30',1,0.00)",
        "INSERT INTO dados_usuario (seq_usuario, endereco, nome_fantasia, razao_social, cnpj, ie, im, uf, data_hora_gravacao, cont_cro, valor_gt) VALUES(1,'e','n','r','c','i','m','u','2026-03-02 08:15:30',1,0.00)",
        "INSERT INTO dados_ecf (num_serie, marca, modelo, tipo, num_caixa) VALUES ('s','m','o','ECF-IF',1)",
        "INSERT INTO versao_sb(num_ecf, versao) VALUES(1,'01.00.00')",
};

const std::string UPDATES[] = {
    "UPDATE outros_documentos SET data_hora_fim_emissao = '2026-03-02 08:15:30' WHERE cont_coo = 1",
    "UPDATE cupom_fiscal SET assinatura_documento = 's', valor_subtotal = 1.00, valor_total = 1.00, valor_troco = 0.00, cpf_cnpj_consumidor = '12345678901', texto_suplementar = '', texto_complementar = '', chave_cupom = '' WHERE cont_coo = 1",
    "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'V', perc_acrescimo = 0, valor_acrescimo = 0.00, tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 0.00, valor_total = 1.00 WHERE cont_coo = 1 AND seq_item = 1",
    "UPDATE item_cupom_fiscal SET id_cancelado = 'S' where cont_coo = '1' and seq_item = '1'",
    "UPDATE item_cupom_nf SET id_cancelado = 'S' where cont_coo = '1' and seq_item = '1'",
    "UPDATE cupom_fiscal SET id_cancelado = 'S' WHERE cont_coo = '1'",
    "UPDATE cupom_nf SET id_cancelado = 'S' WHERE cont_coo = '1'",
    "UPDATE cupom_fiscal SET id_cancelado = 'S' where cont_coo = '1'",
    "UPDATE cupom_nf SET id_cancelado = 'S' where cont_coo = '1'",
    "UPDATE item_cupom_fiscal SET tipo_acrescimo = 'P', perc_acrescimo = 10.50, valor_acrescimo = 1.05 WHERE cont_coo = 1 and seq_item = 1",
    "UPDATE item_cupom_nf SET tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 1.05 WHERE cont_coo = 1 and seq_item = 1",
    "UPDATE item_cupom_nf SET tipo_acrescimo = 'P', perc_acrescimo = 10.50, valor_acrescimo = 1.05 WHERE cont_coo = 1 and seq_item = 1",
    "UPDATE item_cupom_fiscal SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 0 WHERE cont_coo = 1 and seq_item = 1",
    "UPDATE item_cupom_nf SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 0 WHERE cont_coo = 1 and seq_item = 1",
    "UPDATE item_cupom_fiscal SET valor_total = 9.45 WHERE cont_coo = 1 and seq_item = 1",
    "UPDATE item_cupom_nf SET valor_total_liquido = 9.45 WHERE cont_coo = 1 and seq_item = 1",
    "UPDATE cupom_fiscal SET tipo_desconto = 'V', perc_desconto = 0, valor_desconto = 1.00 WHERE cont_coo = 1",
    "UPDATE cupom_fiscal SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 0.00 WHERE cont_coo = 1",
    "UPDATE cupom_nf SET tipo_acrescimo = 'V', valor_acrescimo = 2.00 WHERE cont_coo = 1",
    "UPDATE cupom_nf SET perc_desconto = 5.00, valor_desconto = 2.00 WHERE cont_coo = 1",
    "UPDATE cupom_nf SET valor_canc_acrescimo = valor_acrescimo, valor_acrescimo = 0.00 WHERE cont_coo = 1",
    "UPDATE cupom_nf SET valor_total_cupom = 2.50, valor_subtotal = 2.50 WHERE cont_coo = 1",
    "UPDATE pagamento_cupom SET valor_estornado = 1.00, valor_pagamento = (valor_pagamento - valor_estornado), id_estornado = 'S' WHERE cont_coo = 1 AND indice_meio_pagamento = 2",
    "UPDATE meio_pagamento SET descricao = 'Cartao',id_vinculacao_ccd = 'N' WHERE num_indice = 2",
    "UPDATE totalizador_nao_fiscal SET descricao='Gas' WHERE num_indice=5",
    "UPDATE dados_usuario SET endereco = 'e',nome_fantasia = 'n',razao_social = 'r', cont_cro = 1, valor_gt = 0.00 WHERE seq_usuario = 1",
    "UPDATE dados_usuario SET cnpj = 'c', ie = 'i', uf = 'u', im = 'm',cont_cro = 1 ,endereco = 'e',nome_fantasia = 'n',razao_social = 'r', valor_gt = 0.00 WHERE seq_usuario = 1",
    "UPDATE dados_ecf SET num_serie = 's',marca = 'm',modelo = 'o',tipo = 't' WHERE num_ecf = 1",
    "UPDATE dados_ecf SET num_caixa = 2 WHERE num_ecf = 1",
};

const std::string COUNTS[] = {
    "SELECT count(*) FROM intervencao WHERE cont_cro = 1",
    "SELECT count(*) FROM fita_detalhe WHERE cont_cfd = 1",
    "SELECT count(*) FROM meio_pagamento WHERE num_indice = 2",
    "SELECT count(*) FROM totalizador_nao_fiscal WHERE num_indice = 5",
    "SELECT count(*) FROM dados_usuario",
    "SELECT count(*) FROM dados_ecf",
    "SELECT count(*) FROM versao_sb",
};

// Required to be a statement that the engine rejects.
const std::string REJECTED =
    "INSERT INTO moeda (num_ecf, data_hora_gravacao, simbolo_moeda) VALUES (1,2026-03-02 08:15:30'R$')";

std::vector<std::string> AllStatements()
{
    std::vector<std::string> all;
    for (const std::string& sql : INSERTS) {
        all.push_back(sql);
    }
    for (const std::string& sql : UPDATES) {
        all.push_back(sql);
    }
    for (const std::string& sql : COUNTS) {
        all.push_back(sql);
    }
    all.push_back(REJECTED);
    return all;
}

// The columns of the list in the first parentheses at or behind `from`.
int EntriesOfList(const std::string& sql, std::size_t from)
{
    const std::size_t open = sql.find('(', from);
    const std::size_t close = sql.find(')', open);
    return 1 + static_cast<int>(std::count(sql.begin() + static_cast<std::ptrdiff_t>(open),
                                           sql.begin() + static_cast<std::ptrdiff_t>(close), ','));
}

bool BeginsWith(const std::string& text, const std::string& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

// The literal that begins at the quote `at`, and those adjacent to it.
std::string LiteralAt(const std::string& source, std::size_t at)
{
    std::string literal;
    while (at < source.size() && source[at] == '"') {
        const std::size_t end = source.find('"', at + 1);
        literal += source.substr(at + 1, end - at - 1);
        at = source.find_first_not_of(" \n", end + 1);
    }
    return literal;
}

// Every literal of the module's sources that begins a statement, up to its first conversion.
std::vector<std::string> HeadsInTheSources()
{
    std::vector<std::string> heads;
    for (const auto& entry : std::filesystem::directory_iterator(ECF_SOURCE_DIR "/CmdDBLogger")) {
        const std::string source = test_support::ReadFile(entry.path());
        for (const std::string keyword : {"INSERT ", "UPDATE ", "SELECT ", "DELETE ", "REPLACE "}) {
            for (std::size_t quote = source.find('"' + keyword); quote != std::string::npos;
                 quote = source.find('"' + keyword, quote + 1)) {
                const std::string literal = LiteralAt(source, quote);
                heads.push_back(literal.substr(0, literal.find('%')));
            }
        }
    }
    return heads;
}

// The columns that the condition of a statement compares with a value; none without a condition.
std::vector<std::string> ColumnsOfCondition(const std::string& sql)
{
    std::vector<std::string> columns;
    std::size_t at = std::min(sql.find(" WHERE "), sql.find(" where "));
    while ((at = sql.find('=', at)) != std::string::npos) {
        const std::size_t last = sql.find_last_not_of(' ', at - 1);
        const std::size_t blank = sql.rfind(' ', last);
        columns.push_back(sql.substr(blank + 1, last - blank));
        ++at;
    }
    return columns;
}

bool HasSecondCondition(const std::string& sql)
{
    return sql.find(" AND ") != std::string::npos || sql.find(" and ") != std::string::npos;
}

class StatementCatalogue : public LoggerTest
{
};

TEST_F(StatementCatalogue, EveryStatementOfTheSourcesIsListed)
{
    const std::vector<std::string> statements = AllStatements();
    const std::vector<std::string> heads = HeadsInTheSources();
    EXPECT_FALSE(heads.empty());
    for (const std::string& head : heads) {
        EXPECT_TRUE(std::any_of(statements.begin(), statements.end(), [&](const std::string& sql) {
            return BeginsWith(sql, head);
        })) << head;
    }
}

TEST_F(StatementCatalogue, EveryListedStatementIsInTheSources)
{
    const std::vector<std::string> heads = HeadsInTheSources();
    for (const std::string& sql : AllStatements()) {
        EXPECT_TRUE(std::any_of(heads.begin(), heads.end(), [&](const std::string& head) {
            return BeginsWith(sql, head);
        })) << sql;
    }
}

TEST_F(StatementCatalogue, EveryInsertHasAValueForEachColumnAndMakesARow)
{
    Documento command = NewCommand<Documento>();
    for (const std::string& sql : INSERTS) {
        EXPECT_EQ(EntriesOfList(sql, 0), EntriesOfList(sql, sql.find("VALUES"))) << sql;
        const int before = sqlite3_total_changes(db);
        command.DBLoggerExecuteSQL(db, sql.c_str());
        EXPECT_EQ(sqlite3_total_changes(db), before + 1) << sql;
    }
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(StatementCatalogue, EveryUpdateChangesTheRowThatItsInsertMade)
{
    for (const std::string& sql : INSERTS) {
        Execute(sql);
    }
    Documento command = NewCommand<Documento>();
    Execute("UPDATE pagamento_cupom SET indice_meio_pagamento = 2");
    for (const std::string& sql : UPDATES) {
        const int before = sqlite3_total_changes(db);
        command.DBLoggerExecuteSQL(db, sql.c_str());
        EXPECT_GT(sqlite3_total_changes(db), before) << sql;
    }
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(StatementCatalogue, EveryUpdateOfAMissingRowChangesNothingAndIsNoError)
{
    Documento command = NewCommand<Documento>();
    for (const std::string& sql : UPDATES) {
        EXPECT_EQ(command.DBLoggerExecuteSQL(db, sql.c_str()), TRUE);
    }
    EXPECT_EQ(sqlite3_total_changes(db), 0);
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(StatementCatalogue, EveryCountIsZeroOnAnEmptyDatabase)
{
    for (const std::string& sql : COUNTS) {
        EXPECT_THAT(Rows(sql), ::testing::ElementsAre("0")) << sql;
    }
}

TEST_F(StatementCatalogue, EveryColumnThatFindsRowsIsSearchedByAnIndex)
{
    std::vector<std::string> statements(std::begin(UPDATES), std::end(UPDATES));
    // Some counts are of a whole table; an update never is.
    std::copy_if(std::begin(COUNTS), std::end(COUNTS), std::back_inserter(statements),
                 [](const std::string& sql) { return sql.find("WHERE") != std::string::npos; });
    for (const std::string& sql : statements) {
        const std::vector<std::string> columns = ColumnsOfCondition(sql);
        EXPECT_EQ(columns.size(), HasSecondCondition(sql) ? 2u : 1u) << sql;
        const std::vector<std::string> plan = Rows("EXPLAIN QUERY PLAN " + sql);
        ASSERT_EQ(plan.size(), 1u) << sql;
        EXPECT_THAT(plan[0], HasSubstr("SEARCH")) << sql;
        EXPECT_THAT(plan[0], Not(HasSubstr("SCAN"))) << sql;
        for (const std::string& column : columns) {
            // A table's integer primary key is its row number.
            EXPECT_THAT(plan[0], HasSubstr((column == "num_ecf" ? "rowid" : column) + "=?")) << sql;
        }
    }
}

TEST_F(StatementCatalogue, CurrencyStatementIsRejected)
{
    Documento command = NewCommand<Documento>();
    command.m_eCmdType = CMD_PROGRAMA_SIMBOLO_MOEDA;

    EXPECT_EQ(command.DBLoggerExecuteSQL(db, REJECTED.c_str()), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ::testing::ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'98', Erro:'near \"08\": syntax error'",
            REJECTED));
    EXPECT_THAT(Rows("SELECT * FROM moeda"), IsEmpty());
}

} // namespace
