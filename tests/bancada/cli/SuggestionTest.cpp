// What somebody meant who mistyped a name.
#include "bancada/cli/Suggestion.h"

#include "tests/bancada/BancadaProgram.h"

#include <gmock/gmock.h>

using namespace bancada_test;
using bancada::Nearest;
using testing::HasSubstr;
using testing::Not;

TEST(Suggestion, TheNearestNameIsTheOneOfTheFewestMistakes)
{
    const std::vector<std::string> names = {"run", "show", "check", "compare", "copy", "recover"};
    EXPECT_EQ(Nearest("shwo", names), "show");
    EXPECT_EQ(Nearest("chekc", names), "check");
    EXPECT_EQ(Nearest("compar", names), "compare");
    EXPECT_EQ(Nearest("cpy", names), "copy");
    EXPECT_EQ(Nearest("recovery", names), "recover");
    EXPECT_EQ(Nearest("xyzzy", names), "");
    EXPECT_EQ(Nearest("", names), "");
    EXPECT_EQ(Nearest(std::string(1000, 'x'), names), "");
}

TEST(Suggestion, TheProgramNamesWhatItDoesNotKnow)
{
    const TempFolder folder;
    ProgramResult result = RunBancada(folder, "shwo db");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err,
                HasSubstr("\"shwo\" is no subcommand of ecf-bancada; did you mean show?\n"));
    result = RunBancada(folder, "check db --josn");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err,
                HasSubstr("\"--josn\" is no option of ecf-bancada check; did you mean --json?\n"));
    result = RunBancada(folder, "check db --zzzzzzzz");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err, HasSubstr("\"--zzzzzzzz\" is no option of ecf-bancada check\n"));
}

TEST(Suggestion, WhatWasTypedDoesNotSteerTheTerminal)
{
    const TempFolder folder;
    for (const char* arguments : {"\"$(printf '\\033[2J')\"", "check \"$(printf 'x\\033[2J')\"",
                                  "check db \"$(printf -- '--x\\033[2J')\""}) {
        const ProgramResult result = RunBancada(folder, arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments;
        EXPECT_THAT(result.err, HasSubstr("\\x1B[2J")) << arguments;
        EXPECT_THAT(result.err, Not(HasSubstr("\x1B"))) << arguments;
    }
}
