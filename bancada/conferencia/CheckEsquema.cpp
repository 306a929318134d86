// The schema of the database against the schema's own text, object by object. Tables are compared
// by their columns, so that one that an upgrade made is as good as one made whole.
#include "LogDatabase/Schema.h"
#include "bancada/Messages.h"
#include "bancada/conferencia/CheckContext.h"
#include "bancada/leitura/Query.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <memory>
#include <sqlite3.h>

namespace bancada::conferencia
{
namespace
{

// What is compared, by its name: "column cupom_fiscal.cont_coo" is "INTEGER".
using Objects = std::map<std::string, std::string>;

const char* const QUERIES[] = {
    // A table's columns: type, whether NULL is refused, default, place in the key.
    "SELECT 'column ' || t.name || '.' || c.name AS object, c.type || CASE c.\"notnull\" WHEN 1 THEN"
    " ' NOT NULL' ELSE '' END || coalesce(' DEFAULT ' || c.dflt_value, '') || CASE c.pk WHEN 0 THEN"
    " '' ELSE ' PRIMARY KEY' END AS what FROM sqlite_schema t, pragma_table_xinfo(t.name) c WHERE"
    " t.type = 'table' AND t.name NOT LIKE 'sqlite\\_%' ESCAPE '\\'",
    // An index: its table, whether it refuses what comes twice, its columns.
    "SELECT 'index ' || i.name AS object, t.name || CASE i.\"unique\" WHEN 1 THEN ' UNIQUE' ELSE ''"
    " END || CASE i.partial WHEN 1 THEN ' partial' ELSE '' END || ' (' || (SELECT"
    " group_concat(coalesce(x.name, '?')) FROM pragma_index_info(i.name) x) || ')' AS what FROM"
    " sqlite_schema t, pragma_index_list(t.name) i WHERE t.type = 'table'",
    ("SELECT type || ' ' || name AS object, 'on ' || tbl_name AS what FROM sqlite_schema WHERE type"
     " IN ('trigger', 'view')"),
};

// The words by which a table's text says more than its columns do.
const char* const CLAUSES[] = {"check",     "references", "collate", "unique",
                               "generated", "strict",     "without"};

std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

void AddClauses(Objects& objects, const std::string& table, const std::string& text)
{
    for (const char* clause : CLAUSES) {
        if (Lower(text).find(clause) != std::string::npos) {
            objects["clause " + table + " " + clause] = clause;
        }
    }
}

Objects ReadObjects(const leitura::DatabaseReading& database)
{
    Objects objects;
    for (const char* sql : QUERIES) {
        leitura::Query query(database, sql);
        while (query.Next()) {
            objects[query.ReadText("object").Shown()] = query.ReadText("what").Shown();
        }
    }
    leitura::Query tables(database, "SELECT name, sql FROM sqlite_schema WHERE type = 'table'");
    while (tables.Next()) {
        AddClauses(objects, tables.ReadText("name").Shown(), tables.ReadText("sql").Shown());
    }
    return objects;
}

struct Close {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};

int AddObject(void* objects, int, char** values, char**)
{
    (*static_cast<Objects*>(objects))[values[0]] = values[1];
    return 0;
}

// Those of the schema's text, made in memory.
Objects ExpectedObjects()
{
    sqlite3* opened = nullptr;
    sqlite3_open(":memory:", &opened);
    const std::unique_ptr<sqlite3, Close> db(opened);
    sqlite3_exec(db.get(), log_database::LOG_SCHEMA, nullptr, nullptr, nullptr);
    Objects objects;
    for (const char* sql : QUERIES) {
        sqlite3_exec(db.get(), sql, AddObject, &objects, nullptr);
    }
    return objects;
}

void Report(CheckContext& context, const std::string& object, const std::string& expected,
            const std::string& found)
{
    context.findings.ReportExplained(FindingKind::ESQUEMA, object,
                                     Tr("%1, where %2 is due", {found, expected}), false, {},
                                     {"", 0, "", expected, found});
}

void CheckApplication(CheckContext& context)
{
    leitura::Query query(context.Database(), "PRAGMA application_id");
    const std::int64_t id = query.Next() ? query.ReadInteger("application_id").Value() : 0;
    const std::int64_t newest = log_database::APPLICATION + log_database::SCHEMA_VERSION;
    // 0 in those made before databases carried it.
    if (id != 0 && (id <= log_database::APPLICATION || id > newest)) {
        Report(context, "application_id", std::to_string(newest), std::to_string(id));
    }
}

} // namespace

void CheckEsquema(CheckContext& context)
{
    const Objects expected = ExpectedObjects();
    const Objects found = ReadObjects(context.Database());
    for (const auto& [object, what] : expected) {
        const auto at = found.find(object);
        if (at == found.end()) {
            Report(context, object, what, Tr("nothing"));
        } else if (at->second != what) {
            Report(context, object, what, at->second);
        }
    }
    for (const auto& [object, what] : found) {
        if (expected.count(object) == 0) {
            Report(context, object, Tr("nothing"), what);
        }
    }
    CheckApplication(context);
}

} // namespace bancada::conferencia
