// What is measured: a case of the catalogue with all it needs, and the texts that its logger hands
// to the engine, which can be executed again as they stand.
#pragma once

#include "tests/catalogue/FixedModel.h"
#include "tests/catalogue/LoggerCases.h"

#include <memory>
#include <sqlite3.h>
#include <string>
#include <vector>

// All runs of a case happen within one open transaction of an in-memory database, where a statement
// costs the engine as little as it can and composing it weighs as much as it can. A new case has
// run once, so that what is done only the first time is behind it.
class Case
{
  public:
    explicit Case(const LoggerCase& logger);
    ~Case();
    Case(const Case&) = delete;
    Case& operator=(const Case&) = delete;

    // Runs the logger once.
    void Log();

    // Hands the engine the texts of one run of the logger, already composed: statements to be
    // executed, counting queries to be prepared, stepped and released.
    void Execute();

    // Takes back what would make the next run another; to be called after each of them.
    void Undo();

    // Takes back all that has been written, so that the tables do not grow.
    void Reset();

    // The texts of one run, and whether the engine rejects one of them, as some are required to be.
    std::size_t Texts() const { return m_texts.size(); }
    bool IsRejected() const { return m_rejected; }

  private:
    struct Text {
        std::string sql;
        bool isQuery;
    };

    void MakeRows();

    std::vector<std::string> m_rows;
    std::vector<std::string> m_undo;
    sqlite3* m_db = nullptr;
    FixedModel m_model;
    std::shared_ptr<Command> m_command;
    std::vector<Text> m_texts;
    bool m_rejected = false;

    friend struct Seam;
};
