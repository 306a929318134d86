// What a database on a simulated disk holds.
#pragma once

#include "tests/falhas/SimulatedDisk.h"

#include <string>

struct sqlite3;

namespace falhas
{

// The name of the logging database on a simulated disk.
inline constexpr char BANCO[] = "banco.db";

// Every row of every logging table with its rowid, as text, one a line.
std::string Dump(sqlite3* db);

// A connection of the test's own, to a healthy disk.
class Leitura
{
  public:
    explicit Leitura(const SimulatedDisk& disk);
    ~Leitura();
    Leitura(const Leitura&) = delete;
    Leitura& operator=(const Leitura&) = delete;

    sqlite3* Handle() const { return m_db; }
    // What `PRAGMA integrity_check` answers.
    std::string Integrity() const;

  private:
    sqlite3* m_db = nullptr;
};

// The first column of a query's first row, or the engine's error text.
std::string Value(sqlite3* db, const std::string& sql);

} // namespace falhas
