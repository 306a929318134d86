// A logging database opened to be read.
#pragma once

#include "bancada/Unusable.h"

#include <cstdint>
#include <sqlite3.h>
#include <string>

namespace bancada
{

// A prepared query. Columns count from 0, parameters from 1.
class Consulta
{
  public:
    // Throws Unusable when the query cannot be prepared.
    Consulta(sqlite3* db, const char* sql);
    ~Consulta();
    Consulta(const Consulta&) = delete;
    Consulta& operator=(const Consulta&) = delete;

    // Starts the query again with these parameters.
    Consulta& Com(std::int64_t primeiro);
    Consulta& Com(std::int64_t primeiro, std::int64_t segundo);

    // Steps to the next row; false after the last one. Throws Unusable when it cannot.
    bool Avanca();

    // A value of the row. A null is 0, or an empty text.
    std::int64_t Inteiro(int coluna) const;
    std::string Texto(int coluna) const;

  private:
    sqlite3* m_db;
    sqlite3_stmt* m_stmt = nullptr;
};

// The connection. It never writes to the file; what it needs to keep aside, it keeps in memory.
// Its queries have two functions beside the engine's own, exact for what the loggers write: of a
// number, centavos(x) is x in hundredths and milesimos(x) is x in thousandths; of anything else
// both are null.
class BancoLeitura
{
  public:
    // Throws Unusable when the file is missing, is no database, or lacks a table or column that
    // a logging database has.
    explicit BancoLeitura(const std::string& caminho);
    ~BancoLeitura();
    BancoLeitura(const BancoLeitura&) = delete;
    BancoLeitura& operator=(const BancoLeitura&) = delete;

    sqlite3* Handle() const { return m_db; }

  private:
    sqlite3* m_db = nullptr;
};

} // namespace bancada
