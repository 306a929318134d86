#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <sqlite3.h>

#include "bancada/Unusable.h"
#include "bancada/relatorio/Decimal.h"

namespace bancada::relatorio
{

// A connection that only reads, on one state of the database from its opening to its end: a
// register that goes on writing meanwhile neither waits nor is seen. Throws Unusable for a file
// that is missing, no database or damaged.
class BancoSomenteLeitura
{
  public:
    explicit BancoSomenteLeitura(std::string caminho);

    sqlite3* handle() const { return m_db.get(); }
    const std::string& caminho() const { return m_caminho; }

    // Throws Unusable with the engine's text for what happened last.
    [[noreturn]] void falha() const;

  private:
    struct Fecha {
        void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
    };

    int abre(const std::string& nome, int opcoes);

    std::string m_caminho;
    std::unique_ptr<sqlite3, Fecha> m_db;
};

// A query and its rows. Lives no longer than its database. Throws Unusable; from the constructor
// also for a database of another program, which has no such table or column.
class Consulta
{
  public:
    Consulta(const BancoSomenteLeitura& banco, const char* sql);

    // Begins anew with these values of ?1, ?2, ...
    template <typename... Valores>
    Consulta& com(Valores... valores)
    {
        sqlite3_reset(m_stmt.get());
        int n = 0;
        (liga(++n, valores), ...);
        return *this;
    }

    // The next row; false after the last.
    bool linha();

    // Ends the query before its last row, so that it holds no cursor.
    void encerra() { sqlite3_reset(m_stmt.get()); }

    std::int64_t inteiro(int coluna) const { return sqlite3_column_int64(m_stmt.get(), coluna); }
    std::string texto(int coluna) const;
    Decimal decimal(int coluna, int casas) const { return lerDecimal(m_stmt.get(), coluna, casas); }
    // Whether an id_ column holds 'S'.
    bool sim(int coluna) const { return texto(coluna) == "S"; }

  private:
    void liga(int n, std::int64_t valor) { sqlite3_bind_int64(m_stmt.get(), n, valor); }
    void liga(int n, std::optional<std::int64_t> valor)
    {
        valor ? liga(n, *valor) : void(sqlite3_bind_null(m_stmt.get(), n));
    }
    void liga(int n, const std::string& valor)
    {
        sqlite3_bind_text(m_stmt.get(), n, valor.data(), static_cast<int>(valor.size()),
                          SQLITE_TRANSIENT);
    }

    struct Finaliza {
        void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
    };

    const BancoSomenteLeitura* m_banco;
    std::unique_ptr<sqlite3_stmt, Finaliza> m_stmt;
};

} // namespace bancada::relatorio
