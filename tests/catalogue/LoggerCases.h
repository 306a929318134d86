// Every command class that has a logger, in the variants in which it is tested and measured.
#pragma once

#include "Interpreter.h"
#include "tests/catalogue/FixedModel.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct LoggerCase {
    std::string commandClass; // "CmdVendeItem"
    std::string variant;      // "ISSQN"; empty where the class has no other

    // Statements that make the rows which have to be there before, in a database whose tables are
    // empty, and those that take back what a run of the logger has changed where the next run would
    // find it and do something else.
    std::vector<std::string> rows;
    std::vector<std::string> undo;

    // Sets what the case needs of the model, and makes its command: parameters, instants and the
    // pointer to the model set. The command must not outlive the model.
    std::function<std::shared_ptr<Command>(FixedModel&)> make;

    std::string Name() const
    {
        return variant.empty() ? commandClass : commandClass + ", " + variant;
    }
};

// All of them, class by class.
const std::vector<LoggerCase>& LoggerCases();
