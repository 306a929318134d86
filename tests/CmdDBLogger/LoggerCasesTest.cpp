// The catalogue of cases, against the classes that are declared and the statements in the sources.
#include "tests/catalogue/LoggerCases.h"

#include "FiscalCommands.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sqlite3.h>
#include <sstream>

namespace
{

using ::testing::ElementsAre;

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// What matches the first group of `pattern` in a text.
std::set<std::string> MatchesOf(const char* pattern, const std::string& text)
{
    const std::regex expression(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at) {
        found.insert((*at)[1]);
    }
    return found;
}

constexpr char STATEMENT[] = "(INSERT INTO \\w+|UPDATE \\w+|SELECT count\\(\\*\\) FROM \\w+)";

class LoggerCasesTest : public LoggerTest
{
  protected:
    // Makes the rows of a case in empty tables, and logs it once; answers its texts.
    std::vector<std::string> Texts(const LoggerCase& logger)
    {
        Execute("BEGIN");
        for (const std::string& row : logger.rows) {
            Execute(row);
        }
        FixedModel model;
        const std::shared_ptr<Command> command = logger.make(model);
        SetRatearSubtotal(model.rateio);
        std::vector<std::string> texts = Logged(*command);
        for (const std::string& sql : logger.undo) {
            Execute(sql);
        }
        EXPECT_EQ(Logged(*command), texts) << logger.Name() << ": another run does something else";
        Execute("ROLLBACK");
        return texts;
    }

  private:
    std::vector<std::string> Logged(Command& command)
    {
        Forget();
        command.DBLogger(db);
        ReleaseOpenQueries();
        std::vector<std::string> texts = Statements();
        for (const PreparedQuery& query : Queries()) {
            texts.push_back(query.text);
        }
        m_rejected = !LogEntries().empty();
        return texts;
    }

  protected:
    bool m_rejected = false; // by the engine, in the run before
};

TEST_F(LoggerCasesTest, EveryDeclaredClassHasACase)
{
    std::set<std::string> classes;
    std::set<std::string> names;
    for (const LoggerCase& logger : LoggerCases()) {
        classes.insert(logger.commandClass);
        EXPECT_TRUE(names.insert(logger.Name()).second) << logger.Name() << " stands there twice";
    }
    EXPECT_EQ(classes, MatchesOf("\nclass (\\w+) : public Command",
                                 ReadFile(ECF_SOURCE_DIR "/FiscalCommands.h")));
}

TEST_F(LoggerCasesTest, EveryKindOfStatementInTheSourcesIsExecuted)
{
    std::set<std::string> inSources;
    for (const auto& entry : std::filesystem::directory_iterator(ECF_SOURCE_DIR "/CmdDBLogger")) {
        inSources.merge(MatchesOf(STATEMENT, ReadFile(entry.path())));
    }
    std::set<std::string> executed;
    for (const LoggerCase& logger : LoggerCases()) {
        for (const std::string& text : Texts(logger)) {
            executed.merge(MatchesOf(STATEMENT, text));
        }
    }
    EXPECT_EQ(executed, inSources);
}

TEST_F(LoggerCasesTest, CasesWithoutAStatementAreThoseOfClassesThatOnlyAnswer)
{
    std::vector<std::string> silent;
    std::vector<std::string> rejected;
    for (const LoggerCase& logger : LoggerCases()) {
        if (Texts(logger).empty()) {
            silent.push_back(logger.Name());
        }
        if (m_rejected) {
            rejected.push_back(logger.Name());
        }
    }
    EXPECT_THAT(silent, ElementsAre("CmdLeituraX, arquivo", "CmdAbreEstornoCCD",
                                    "CmdInsereAliquota", "CmdHabilitaTotalizadores",
                                    "CmdDesabilitaTotalizadores", "CmdProgramaLoja"));
    EXPECT_THAT(rejected, ElementsAre("CmdFechaCupom, cupom adicional", "CmdProgramaMoeda"));
}

} // namespace
