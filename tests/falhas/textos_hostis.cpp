// Hostile texts in every text field of every command: what the caller's connection refuses, and
// what the module's statements let through.
#include "bancada/banco/LogSchema.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/comandos/Configura.h"
#include "bancada/log/Losses.h"
#include "bancada/tape/FieldTable.h"
#include "bancada/tape/TapeFields.h"
#include "tests/falhas/Jornada.h"
#include "tests/falhas/RefusedStatements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace falhas;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

// Counts a command's text fields, and overwrites one of them, cut as a firmware would cut it.
class TextWriter final : public bancada::FieldVisitor
{
  public:
    TextWriter() = default;
    TextWriter(std::size_t which, const std::string& text) : m_which(which), m_text(&text) {}

    const std::vector<std::string>& Names() const { return m_names; }

    using FieldVisitor::Text;
    void Text(const char* name, char* out, std::size_t size, bancada::Presence, const char*,
              const char*) override
    {
        if (m_text != nullptr && m_names.size() == m_which) {
            const std::size_t length = std::min(m_text->size(), size - 1);
            std::memset(out, 0, size);
            std::memcpy(out, m_text->data(), length);
        }
        m_names.emplace_back(name);
    }
    void Text(const char* name, std::string& out, std::size_t maxBytes, bancada::Presence,
              const char*, const char*) override
    {
        if (m_text != nullptr && m_names.size() == m_which) {
            out = m_text->substr(0, std::min(maxBytes, m_text->find('\0')));
        }
        m_names.emplace_back(name);
    }
    void Integer(const char*, int&, int, int, bancada::Presence, const char*, const char*) override
    {
    }
    void Flag(const char*, bool&, bancada::Presence, const char*, const char*) override {}
    void Money(const char*, Financial&, bancada::Presence, const char*, const char*) override {}
    void Quantity(const char*, bancada::Decimal&, int, bancada::Presence, const char*,
                  const char*) override
    {
    }
    void Percent(const char*, int&, bancada::Presence, const char*, const char*) override {}
    void Choice(const char*, int&, std::initializer_list<Option>, bancada::Presence, const char*,
                const char*) override
    {
    }

  private:
    std::size_t m_which = 0;
    const std::string* m_text = nullptr;
    std::vector<std::string> m_names;
};

// A register and its database at a moment of a day.
struct Moment {
    bancada::Memoria memoria;
    Image image;
};

Moment After(const std::vector<std::string>& lines)
{
    const ScratchFile log;
    SimulatedDisk disk;
    Moment moment;
    {
        Bancada bancada(disk, log.Path());
        for (const bancada::TapeCommand& line : ParseTape(lines)) {
            EXPECT_TRUE(bancada.Roda(line));
        }
        moment.memoria = bancada.registro.GetMemoria();
    }
    moment.image = disk.Files();
    return moment;
}

// Nothing open, an open receipt, one in payment, an open non-fiscal receipt. Receipts of both kinds
// came before, whose rows are there to be damaged.
const std::vector<Moment>& Moments()
{
    static const std::vector<Moment> moments = [] {
        const std::string item =
            R"({"cmd":"vende_item","codigo":"1","descricao":"ARROZ","quantidade":"2","valor_unitario":"10.00","tributacao":"T","indice":1})";
        const std::string paid = R"({"cmd":"efetua_pagamento","meio":1,"valor":"30.00"})";
        const std::vector<std::string> start = {
            R"({"cmd":"insere_aliquota","tributacao":"T","indice":1,"percentual":"18.00"})",
            R"({"cmd":"insere_meio_pagamento","indice":1,"descricao":"DINHEIRO"})",
            R"({"cmd":"insere_meio_pagamento","indice":2,"descricao":"CHEQUE"})",
            R"({"cmd":"insere_reg_ope_nf","indice":3,"descricao":"RECARGA"})",
            R"({"cmd":"insere_reg_ope_nf","indice":4,"descricao":"LUZ"})",
            R"({"cmd":"sangria","operacao":"fundo_troco","valor":"50.00"})",
            R"({"cmd":"abre_cupom"})",
            item,
            paid,
            R"({"cmd":"fecha_cupom"})",
            R"({"cmd":"abre_cnf"})",
            R"({"cmd":"vende_item_nf","totalizador":3,"valor":"20.00"})",
            R"({"cmd":"efetua_pagamento","meio":1,"valor":"20.00"})",
            R"({"cmd":"fecha_cupom_nf"})"};
        const auto with = [&](std::vector<std::string> more) {
            more.insert(more.begin(), start.begin(), start.end());
            return After(more);
        };
        return std::vector<Moment>{
            with({}), with({R"({"cmd":"abre_cupom"})", item}),
            with({R"({"cmd":"abre_cupom"})", item, paid}), with({R"({"cmd":"abre_cnf"})"}),
            with({R"({"cmd":"abre_cupom"})", item, paid, R"({"cmd":"fecha_cupom"})"})};
    }();
    return moments;
}

// What carries the texts on that the register keeps.
const std::vector<bancada::TapeCommand>& Carriers()
{
    static const std::vector<bancada::TapeCommand> carriers = ParseTape(
        {R"({"cmd":"fecha_cupom","mensagem":"OBRIGADO"})",
         R"({"cmd":"programa_nr_serie","marca":"BANCADA","modelo":"R1","tipo":"ECF-IF","num_serie":"1"})",
         R"({"cmd":"programa_cnpj_ie_im","cnpj":"47195328000174","ie":"244123456110","im":"1","uf":"SP"})",
         R"({"cmd":"reducao_z"})"});
    return carriers;
}

using Rows = std::map<std::string, std::string>; // "table|rowid" to the row

Rows Parse(const std::string& dump)
{
    static const std::set<std::string> tables = [] {
        std::set<std::string> names;
        for (const auto& column : bancada::LogSchemaColumns()) {
            names.insert(column.first);
        }
        return names;
    }();
    Rows rows;
    std::istringstream lines(dump);
    std::string key;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t bar = line.find('|');
        const std::size_t end = bar == std::string::npos ? bar : line.find('|', bar + 1);
        // A line break within a text goes on with the row before.
        if (end != std::string::npos && tables.count(line.substr(0, bar)) != 0) {
            key = line.substr(0, end);
        }
        rows[key] += line + '\n';
    }
    return rows;
}

// A text field of a command; configura is the bench's own.
struct Field {
    std::string command;
    std::string name;
    std::size_t which;
    std::size_t moment;
};

std::string NameOf(const Field& field)
{
    return field.command + "." + field.name;
}

struct Outcome {
    bool refused = false; // by the register; the logger ran all the same
    Rows rows;
    std::size_t rejected = 0; // statements
};

std::string State(sqlite3* db)
{
    std::string state;
    for (const char* sql :
         {"SELECT group_concat(type || name || tbl_name || rootpage || sql) FROM sqlite_schema",
          "PRAGMA user_version",
          "PRAGMA application_id",
          "PRAGMA schema_version",
          "PRAGMA journal_mode",
          "PRAGMA page_size",
          "PRAGMA auto_vacuum",
          "PRAGMA encoding",
          "PRAGMA synchronous",
          "PRAGMA writable_schema",
          "PRAGMA foreign_keys",
          "PRAGMA recursive_triggers",
          "PRAGMA trusted_schema",
          "PRAGMA query_only",
          "PRAGMA ignore_check_constraints",
          "PRAGMA temp_store",
          "PRAGMA locking_mode",
          "PRAGMA cell_size_check",
          "PRAGMA secure_delete",
          "PRAGMA max_page_count",
          "PRAGMA cache_size",
          "PRAGMA busy_timeout",
          "PRAGMA wal_autocheckpoint",
          "SELECT group_concat(name) FROM pragma_database_list",
          "SELECT count(*) FROM temp.sqlite_schema"}) {
        state += Value(db, sql) + '\n';
    }
    int defensive = 0;
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, -1, &defensive);
    int extensions = 0;
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, -1, &extensions);
    state += std::to_string(defensive) + std::to_string(extensions);
    for (int id = 0; id <= SQLITE_LIMIT_WORKER_THREADS; ++id) {
        state += ' ' + std::to_string(sqlite3_limit(db, id, -1));
    }
    return state;
}

// The command with every field's example. A payment is moved to another means, where the examples
// name the same one twice.
bancada::TapeCommand Example(const bancada::CatalogueEntry& item, bancada::Registro& registro)
{
    bancada::FieldTable table;
    item.make(registro)->Fields(table);
    bancada::TapeCommand example =
        ParseTape({bancada::ExampleLine(item.name, table.Fields())}).front();
    for (bancada::TapeField& field : example.fields) {
        if (field.name == "destino") {
            field.value.integer = 2;
        }
    }
    return example;
}

// Runs the field's command at its moment with `text` in the field, then the carriers. Checks what
// must never happen, whatever the text.
Outcome RunWith(const Field& field, const std::string* text)
{
    static const ScratchFile log;
    const Moment& moment = Moments()[field.moment];
    SimulatedDisk disk(moment.image);
    Outcome outcome;
    Rows before;
    std::string stateBefore;
    {
        // What a connection of the same making looks like when nothing has happened on it.
        const ScratchFile other;
        const SimulatedDisk same(moment.image);
        Bancada untouched(same, other.Path(), true);
        before = Parse(Dump(untouched.Handle()));
        sqlite3_set_authorizer(untouched.Handle(), nullptr, nullptr);
        stateBefore = State(untouched.Handle());
    }
    log.Empty();
    RefusedStatements().clear();
    Bancada bancada(disk, log.Path(), true);
    bancada.registro = bancada::Registro(moment.memoria);
    const RtcAbsoluteTime now(1709539400);
    const RtcAbsoluteTime later(1709539401);

    if (field.command == bancada::CONFIGURA) {
        bancada::Configura settings(bancada.registro);
        if (text != nullptr) {
            TextWriter writer(field.which, *text);
            settings.Fields(writer);
        }
        settings.Apply(bancada.registro);
    } else {
        const bancada::CatalogueEntry* item = bancada::FindComando(field.command);
        const bancada::TapeCommand example = Example(*item, bancada.registro);
        const auto command = bancada.caixa.Read(example);
        if (text != nullptr) {
            TextWriter writer(field.which, *text);
            command->Fields(writer);
        }
        outcome.refused = !bancada.caixa.Execute(*command, now).Executed();
        // A firmware may check less than this register: the logger gets the text all the same, as
        // if the example had been executed.
        if (outcome.refused && text != nullptr) {
            bancada::Caixa trash(":memory:", {}, bancada.registro.GetMemoria());
            const auto unchecked = trash.Read(example);
            EXPECT_TRUE(trash.Execute(*unchecked, now).Executed());
            bancada.registro = trash.GetRegistro();
            unchecked->GetCommand().m_dtExecEnd = RtcAbsoluteTime(matlong[0]);
            TextWriter writer(field.which, *text);
            unchecked->Fields(writer);
            bancada.banco.BeginCommand();
            unchecked->GetCommand().DBLogger(bancada.Handle());
            EXPECT_TRUE(bancada.banco.CommitCommand());
        }
    }
    for (const bancada::TapeCommand& line : Carriers()) {
        const auto carrier = bancada.caixa.Read(line);
        EXPECT_NE(bancada.caixa.Execute(*carrier, later).fate, bancada::Answer::Fate::LOST);
    }

    outcome.rows = Parse(Dump(bancada.Handle()));
    for (const auto& row : before) {
        EXPECT_EQ(outcome.rows.count(row.first), 1U) << "deleted: " << row.second;
    }
    EXPECT_EQ(bancada.banco.Counts().statementsRejected,
              static_cast<std::int64_t>(RefusedStatements().size()));
    outcome.rejected = RefusedStatements().size();
    EXPECT_EQ(bancada::ReadLosses(log.Path()).rejected.size(), outcome.rejected);
    sqlite3_set_authorizer(bancada.Handle(), nullptr, nullptr);
    EXPECT_EQ(State(bancada.Handle()), stateBefore);
    for (const auto& file : disk.Files()) {
        EXPECT_TRUE(file.first == BANCO || file.first == std::string(BANCO) + "-wal") << file.first;
    }
    return outcome;
}

// Every text field that there is, each at the first moment at which the register takes its
// command's example.
const std::vector<Field>& Fields()
{
    static const std::vector<Field> fields = [] {
        std::vector<Field> all;
        bancada::Registro registro;
        const auto add = [&](const std::string& command, const TextWriter& writer,
                             std::size_t moment) {
            for (std::size_t i = 0; i < writer.Names().size(); ++i) {
                all.push_back({command, writer.Names()[i], i, moment});
            }
        };
        for (const bancada::CatalogueEntry& item : bancada::Catalogue()) {
            TextWriter writer;
            item.make(registro)->Fields(writer);
            if (writer.Names().empty()) {
                continue;
            }
            std::size_t moment = 0;
            while (moment + 1 < Moments().size() &&
                   RunWith({item.name, "", 0, moment}, nullptr).refused) {
                ++moment;
            }
            add(item.name, writer, moment);
        }
        TextWriter writer;
        bancada::Configura(registro).Fields(writer);
        add(bancada::CONFIGURA, writer, 2);
        return all;
    }();
    return fields;
}

std::string TableOf(const std::string& key)
{
    return key.substr(0, key.find('|'));
}

// What stands where it should not: rows that the example neither changes nor makes, in the tables
// that it writes and in others.
struct Strangers {
    std::size_t inOwnTables = 0;
    std::size_t elsewhere = 0;
};

Strangers FindStrangers(const Rows& rows, const Rows& example, const Rows& before)
{
    const auto changed = [&](const Rows& in, const std::string& key) {
        const auto is = in.find(key);
        const auto was = before.find(key);
        return is != in.end() && (was == before.end() || was->second != is->second);
    };
    std::set<std::string> own;
    for (const auto& row : example) {
        if (changed(example, row.first)) {
            own.insert(TableOf(row.first));
        }
    }
    Strangers found;
    for (const auto& row : rows) {
        if (changed(rows, row.first) && !changed(example, row.first)) {
            ++(own.count(TableOf(row.first)) != 0 ? found.inOwnTables : found.elsewhere);
        }
    }
    return found;
}

Rows RowsOf(const Moment& moment)
{
    const SimulatedDisk disk(moment.image);
    const Leitura leitura(disk);
    return Parse(Dump(leitura.Handle()));
}

// Texts that come to nothing but the field's own row, kept or refused.
std::vector<std::string> PlainTexts()
{
    std::vector<std::string> texts = {
        "'",
        "''",
        "'''",
        "\"",
        "\\'",
        "--",
        "x'--",
        "x' /*",
        "/* x */",
        ";",
        "';",
        "'; --",
        "');--",
        "%s%n%d%s",
        "x\ny\rz\t",
        "\xC3",
        "\xE2\x80\x99",
        "\xFF\xFE'",
        "\xC0\xA7; DROP TABLE moeda; --",
        std::string("x\0' ; DROP TABLE moeda", 22),
        "'||load_extension('x')||'",
        "'||(SELECT sql FROM sqlite_master)||'",
        "'||(SELECT 1)||'",
        "'||(SELECT num_ecf FROM moeda)||'",
        "'||random()||'",
        "'||hex(zeroblob(99999999))||'",
        "'||readfile('/etc/passwd')||'",
        "'||char(39)||'",
        "'||sqlite_version()||'",
        "'||printf('%99999d',1)||'",
        "' UNION SELECT 1--",
        "';ATTACH 'x' AS y;--",
        "';DETACH main;--",
        "';VACUUM INTO 'x';--",
        "';PRAGMA writable_schema=1;--",
        "';DROP TABLE moeda;--",
        "';DELETE FROM moeda;--",
        std::string(4000, 'A'),
        std::string(4000, '\''),
        "'" + std::string(4000, '('),
        std::string(2000, '-') + "'",
    };
    std::mt19937 random(20240304);
    for (int i = 0; i < 8; ++i) {
        std::string bytes(200, ' ');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() % 256);
        }
        texts.push_back(bytes);
    }
    return texts;
}

// Second statements that the connection refuses.
const char* const REFUSED[] = {
    "DROP TABLE moeda",
    "DROP INDEX idx_cupom_nf",
    "ALTER TABLE moeda RENAME TO m",
    "ALTER TABLE moeda ADD x",
    "CREATE TABLE x(a)",
    "CREATE TEMP TABLE x(a)",
    "CREATE VIEW x AS SELECT 1",
    "CREATE INDEX x ON moeda(num_ecf)",
    "DELETE FROM cupom_nf",
    "UPDATE OR REPLACE cupom_nf SET rowid=1",
    "DELETE FROM sqlite_master",
    "UPDATE sqlite_master SET sql=''",
    "ATTACH 'x' AS y",
    "ATTACH ':memory:' AS y",
    "DETACH main",
    "VACUUM",
    "VACUUM INTO 'x'",
    "REINDEX",
    "ANALYZE",
    "PRAGMA journal_mode=OFF",
    "PRAGMA synchronous=0",
    "PRAGMA writable_schema=1",
    "PRAGMA user_version=7",
    "PRAGMA query_only=1",
    "PRAGMA foreign_keys=1",
    "BEGIN",
    "COMMIT",
    "ROLLBACK",
    "SAVEPOINT x",
    "SELECT load_extension('x')",
    "SELECT sql FROM sqlite_master",
    "SELECT * FROM (SELECT 1)",
    "WITH x AS (SELECT 1) SELECT * FROM x",
    "INSERT INTO moeda SELECT 1,2,3",
};

// One that it does not.
const char PROBE[] = "UPDATE cupom_nf SET num_ecf=7";

// How a text ends the statement around it: the values that the row still wants, or none.
std::vector<std::string> Closers()
{
    std::vector<std::string> closers = {"';"};
    std::string values = "'";
    for (int i = 0; i < 20; ++i) {
        closers.push_back(values + ");");
        values += ",0";
    }
    return closers;
}

bool LetsIn(const Outcome& outcome, const Rows& before)
{
    for (const auto& [key, row] : outcome.rows) {
        const auto was = before.find(key);
        if (key.compare(0, 9, "cupom_nf|") == 0 && was != before.end() && was->second != row) {
            return true;
        }
    }
    return false;
}

// The closer that carries a second statement in by this field.
std::optional<std::string> Way(const Field& field, const Rows& before)
{
    for (const std::string& closer : Closers()) {
        const std::string text = closer + PROBE + ";--";
        if (LetsIn(RunWith(field, &text), before)) {
            return closer;
        }
    }
    return std::nullopt;
}

TEST(HostileTexts, EveryFieldHasACommandThatTheRegisterTakes)
{
    ASSERT_GE(Fields().size(), 30U);
    for (const Field& field : Fields()) {
        EXPECT_FALSE(RunWith(field, nullptr).refused) << NameOf(field);
    }
}

TEST(HostileTexts, ChangeNothingButTheRowOfTheirOwnStatement)
{
    const std::vector<std::string> texts = PlainTexts();
    std::size_t cases = 0;
    std::set<std::string> reachFurther;
    for (const Field& field : Fields()) {
        const Rows before = RowsOf(Moments()[field.moment]);
        const Outcome example = RunWith(field, nullptr);
        for (const std::string& text : texts) {
            SCOPED_TRACE(NameOf(field) + ": " + text.substr(0, 60));
            const Outcome outcome = RunWith(field, &text);
            const Strangers strangers = FindStrangers(outcome.rows, example.rows, before);
            EXPECT_EQ(strangers.elsewhere, 0U);
            if (strangers.inOwnTables != 0) {
                reachFurther.insert(NameOf(field));
            }
            ++cases;
            if (HasFailure()) {
                return;
            }
        }
    }
    // What remains possible: a comment takes the condition from an UPDATE, which then changes every
    // row of its table.
    EXPECT_THAT(reachFurther,
                ElementsAre("insere_meio_pagamento.descricao", "insere_reg_ope_nf.descricao"));
    std::cout << texts.size() << " texts in " << Fields().size() << " fields: " << cases
              << " runs\n";
}

TEST(HostileTexts, SecondStatementIsRefusedUnlessItInsertsOrUpdatesLoggingRows)
{
    std::size_t cases = 0;
    std::vector<std::string> ways;
    for (const Field& field : Fields()) {
        const Rows before = RowsOf(Moments()[field.moment]);
        const std::optional<std::string> closer = Way(field, before);
        if (!closer) {
            continue;
        }
        ways.push_back(NameOf(field));
        const Outcome example = RunWith(field, nullptr);
        for (const char* second : REFUSED) {
            const std::string text = *closer + second + ";--";
            SCOPED_TRACE(NameOf(field) + ": " + text);
            const Outcome outcome = RunWith(field, &text);
            const Strangers strangers = FindStrangers(outcome.rows, example.rows, before);
            EXPECT_EQ(strangers.inOwnTables + strangers.elsewhere, 0U);
            EXPECT_GT(outcome.rejected, example.rejected);
            ++cases;
            if (HasFailure()) {
                return;
            }
        }
    }
    // What remains possible: an update of other receipts' rows, by fields that hold enough of it.
    EXPECT_THAT(ways, UnorderedElementsAre(
                          "efetua_pagamento.info", "estorna_meio_pagamento.info",
                          "programa_usuario.razao_social", "programa_usuario.nome_fantasia",
                          "programa_usuario.endereco", "vende_item_detalhado.descricao"));
    std::cout << ways.size() << " of " << Fields().size() << " fields let a second statement in, "
              << std::size(REFUSED) << " kinds refused in each: " << cases << " runs\n";
}

} // namespace
