// What --help tells, in both languages.
#include "bancada/cli/Help.h"
#include "tests/bancada/cli/RunFixture.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace bancada_test;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{

class HelpTest : public testing::Test
{
  protected:
    ProgramResult Run(const std::string& arguments) { return RunBancada(folder, arguments); }

    std::vector<std::string> Lines(const std::string& text)
    {
        std::istringstream stream(text);
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    std::vector<std::string> Subcommands()
    {
        std::vector<std::string> names;
        bool listed = false;
        for (const std::string& line : Lines(Run("--help").out)) {
            listed = listed ? line.size() > 2 : line == "Subcommands:";
            if (listed && line[0] == ' ' && line[2] != ' ') {
                names.push_back(line.substr(2, line.find(' ', 2) - 2));
            }
        }
        return names;
    }

    // The command lines of the examples in a help.
    std::vector<std::string> Examples(const std::string& help)
    {
        std::vector<std::string> examples;
        for (const std::string& line : Lines(help)) {
            if (line.rfind("  ecf-bancada ", 0) == 0) {
                examples.push_back(line.substr(2));
            }
        }
        return examples;
    }

    TempFolder folder;
};

TEST_F(HelpTest, EverySubcommandBeginsWithExamplesOfItself)
{
    const std::vector<std::string> names = Subcommands();
    EXPECT_GT(names.size(), 10U);
    for (const std::string& name : names) {
        const std::string help = Run(name + " --help").out;
        const std::size_t examples = help.find("\nExamples:\n");
        ASSERT_NE(examples, std::string::npos) << name;
        EXPECT_LT(examples, help.find("\nOptions:\n")) << name;
        EXPECT_LT(examples, help.find("\nPositionals:\n")) << name;
        for (const std::string& example : Examples(help)) {
            EXPECT_THAT(example, StartsWith("ecf-bancada " + name));
        }
        EXPECT_FALSE(Examples(help).empty()) << name;
    }
}

TEST_F(HelpTest, TheExamplesDoWhatTheySay)
{
    folder.Write("dia.jsonl", PROGRAMMING + RECEIPT + "{\"cmd\":\"reducao_z\"}\n");
    folder.Write("amanha.jsonl", "{\"cmd\":\"leitura_x\",\"em\":\"2026-12-01 08:00:00\"}\n");
    ASSERT_EQ(Run("run dia.jsonl --db estragada.db").exitCode, 0);
    ASSERT_EQ(Run("run dia.jsonl --db outra.db").exitCode, 0);
    ASSERT_EQ(Run("export outra.db --output outra.txt").exitCode, 0);
    ASSERT_EQ(Run("export outra.db --output loja.txt").exitCode, 0);
    const std::string name = "ecf-bancada";
    for (const std::string& subcommand : Subcommands()) {
        for (const std::string& example : Examples(Run(subcommand + " --help").out)) {
            if (example.find("man -l") != std::string::npos) {
                continue; // not every machine has it
            }
            const ProgramResult result =
                RunShell(folder, ProgramInShell() + example.substr(name.size()));
            EXPECT_LE(result.exitCode, 1) << example << "\n" << result.err;
            EXPECT_GE(result.exitCode, 0) << example << "\n" << result.err;
        }
    }
}

TEST_F(HelpTest, NoTextOfTheHelpStaysEnglish)
{
    std::vector<std::string> helps = {"--help"};
    for (const std::string& name : Subcommands()) {
        helps.push_back(name + " --help");
    }
    for (const std::string& help : helps) {
        const std::string english = Run(help).out;
        const ProgramResult portuguese = Run(help + " --language pt");
        EXPECT_EQ(portuguese.exitCode, 0) << help;
        const std::vector<std::string> lines = Lines(portuguese.out);
        const std::set<std::string> told(lines.begin(), lines.end());
        EXPECT_GT(told.size(), 4U);
        for (const std::string& line : Lines(english)) {
            if (!line.empty() && line.rfind("  ecf-bancada ", 0) != 0) {
                EXPECT_EQ(told.count(line), 0U) << help << ": " << line;
            }
        }
    }
}

TEST_F(HelpTest, TheLanguageIsWhatTheOptionSaysOrElseTheEnvironment)
{
    const std::string program = ProgramInShell();
    const auto first = [&](const std::string& line) {
        return RunShell(folder, line).out.substr(0, 7);
    };
    EXPECT_EQ(first("LC_ALL=pt_BR.UTF-8 " + program + " check --help"), "Confere");
    EXPECT_EQ(first("LC_ALL=C " + program + " check --help"), "Reconci");
    EXPECT_EQ(first("LC_ALL=pt_BR.UTF-8 " + program + " --language en check --help"), "Reconci");
    EXPECT_EQ(first("LC_ALL=C " + program + " --language=pt check --help"), "Confere");
    EXPECT_EQ(first("LC_ALL=C " + program + " check --help --language pt"), "Confere");
    const ProgramResult none = Run("check x --language de");
    EXPECT_EQ(none.exitCode, 2);
    EXPECT_THAT(none.err, HasSubstr("--language: de not in {en,pt}"));
}

TEST_F(HelpTest, ACopyOfTheProgramSpeaksPortugueseToo)
{
    std::filesystem::copy_file(ECF_BANCADA_PROGRAM, folder.File("copied"));
    const ProgramResult result =
        RunShell(folder, ECF_EMULATOR " ./copied --language pt check --help");
    EXPECT_THAT(result.out, StartsWith("Confere"));
}

TEST_F(HelpTest, WhatCannotBeParsedIsToldInThePersonsLanguage)
{
    const auto told = [&](const std::string& arguments) {
        const ProgramResult result = Run("--language pt " + arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments;
        return result.err.substr(0, result.err.find('\n'));
    };
    EXPECT_EQ(told(""), "Falta o subcomando");
    EXPECT_EQ(told("check"), "Falta DB");
    EXPECT_EQ(told("show x --coo a"), "--coo: o valor a não está entre 1 e 999999");
    EXPECT_EQ(told("generate --days 1 --receipts 1 --seed a"), "Não é um valor válido: --seed = a");
    EXPECT_EQ(told("show x --coo"), "--coo: falta o valor (1 INTEIRO)");
    EXPECT_EQ(told("show x --coo 1 --crz 2"), "--coo exclui --crz");
    EXPECT_EQ(told("generate --days 0 --receipts 1 --seed 1"),
              "--days: o valor 0 não está entre 1 e 20000");
    EXPECT_EQ(told("copy x y z"), "Este argumento não era esperado: z");
    EXPECT_EQ(told("copy x y z w"), "Estes argumentos não eram esperados: w z");
    EXPECT_THAT(Run("--language pt check").err,
                HasSubstr("\nUse --help ou --help-all para mais informações.\n"));
}

} // namespace
