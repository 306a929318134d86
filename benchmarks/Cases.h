// What is measured: for each case a command whose logger is run, and the statements that it hands
// to the engine, which are run again as they stand.
#pragma once

#include "FiscalData/Cupom.h"

#include <memory>
#include <sqlite3.h>
#include <string>
#include <vector>

class Command;

// One logger with all it needs: a command, a fiscal data model with fixed answers and an in-memory
// logging database. All runs of a case happen within one open transaction, so that a statement
// costs the engine as little as it can and composing it weighs as much as it can.
class Case
{
  public:
    // REQUIRES: `name` is one of Names().
    explicit Case(const std::string& name);
    ~Case();
    Case(const Case&) = delete;
    Case& operator=(const Case&) = delete;

    static std::vector<std::string> Names();

    // Runs the logger once.
    void Log();

    // Executes the statements of one run of the logger, already composed.
    void Execute();

    // Takes back what has been written since the last call, so that the tables do not grow.
    void Reset();

    const std::vector<std::string>& Statements() const { return m_statements; }

  private:
    struct Model;

    sqlite3* m_db = nullptr;
    std::unique_ptr<Model> m_model;
    Command& m_command; // one of the model's
    std::vector<std::string> m_statements;
};
