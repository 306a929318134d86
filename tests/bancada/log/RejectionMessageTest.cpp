// The record by which the module reports a rejected statement.
#include "bancada/log/RejectionMessage.h"

#include <gtest/gtest.h>
#include <string>

namespace bancada
{
namespace
{

TEST(RejectionMessage, NamesTheCommandAndTheError)
{
    int command = 0;
    std::string error;
    EXPECT_TRUE(ParseRejectionMessage(
        "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'157', Erro:'near \"x\"'", command,
        error));
    EXPECT_EQ(command, 157);
    EXPECT_EQ(error, "near \"x\"");
}

TEST(RejectionMessage, TheErrorEndsWithTheLastQuote)
{
    int command = 0;
    std::string error = "before";
    EXPECT_TRUE(ParseRejectionMessage(
        "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'-1', Erro:'a', Erro:'b''", command,
        error));
    EXPECT_EQ(command, -1);
    EXPECT_EQ(error, "a', Erro:'b'");
    EXPECT_TRUE(ParseRejectionMessage(
        "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'2', Erro:''", command, error));
    EXPECT_EQ(error, "");
}

TEST(RejectionMessage, AnyOtherTextIsNone)
{
    for (const char* text :
         {"", "INSERT INTO t", "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'",
          "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'x', Erro:'e'",
          "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'99999999999', Erro:'e'",
          "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'2', erro:'e'",
          "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'2', Erro:'",
          "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'2', Erro:'e",
          " DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'2', Erro:'e'"}) {
        int command = 7;
        std::string error = "before";
        EXPECT_FALSE(IsRejectionMessage(text)) << text;
        EXPECT_FALSE(ParseRejectionMessage(text, command, error)) << text;
        EXPECT_EQ(command, 7);
        EXPECT_EQ(error, "before");
    }
}

} // namespace
} // namespace bancada
