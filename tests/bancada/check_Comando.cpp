// ecf-bancada check as a user calls it: output, exit codes, what it cannot read.
#include "bancada/cli/Subcommands.h"
#include "tests/bancada/check_Banco.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace bancada
{
namespace
{

using testing::AnyOf;
using testing::Each;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class ComandoCheck : public BancoConferido
{
  protected:
    ComandoCheck()
    {
        m_pasta = testing::TempDir() + "check_pasta_XXXXXX";
        EXPECT_NE(mkdtemp(m_pasta.data()), nullptr);
    }
    ~ComandoCheck() override { std::filesystem::remove_all(m_pasta); }

    // Runs the subcommand; its output goes to m_saida. Answers the exit code.
    int Executa(std::vector<std::string> argumentos)
    {
        int codigo = EXIT_OK;
        CLI::App app;
        AddRun(app, codigo);
        AddCheck(app, codigo);
        std::reverse(argumentos.begin(), argumentos.end());
        testing::internal::CaptureStdout();
        try {
            app.parse(argumentos);
        } catch (...) {
            std::cout.flush();
            m_saida = testing::internal::GetCapturedStdout();
            throw;
        }
        std::cout.flush();
        m_saida = testing::internal::GetCapturedStdout();
        return codigo;
    }

    // What the subcommand says that it cannot use.
    std::string Recusa(const std::vector<std::string>& argumentos)
    {
        try {
            Executa(argumentos);
        } catch (const Unusable& erro) {
            return erro.what();
        }
        return "accepted";
    }

    std::string Arquivo(const std::string& nome, const std::string& conteudo)
    {
        const std::string caminho = m_pasta + "/" + nome;
        std::ofstream(caminho, std::ios::binary) << conteudo;
        return caminho;
    }

    std::vector<std::string> Linhas() const
    {
        std::vector<std::string> linhas;
        std::istringstream saida(m_saida);
        for (std::string linha; std::getline(saida, linha);) {
            linhas.push_back(linha);
        }
        return linhas;
    }

    std::string m_pasta, m_saida;
};

TEST_F(ComandoCheck, ACleanDatabaseExitsWithZeroAndKeepsItsNotes)
{
    Escreve(DIAS_LIMPOS);
    EXPECT_EQ(Executa({"check", m_caminho}), 0);
    EXPECT_EQ(m_saida,
              "note: cupom-adicional: COO 11: paid 10.00, closing never written\n"
              "note: documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10\n"
              "7 fiscal receipts, 4 non-fiscal receipts, 2 Z reductions: 0 findings, 2 notes\n");
}

TEST_F(ComandoCheck, AFindingExitsWithOne)
{
    Escreve(DIAS_LIMPOS);
    Escreve("UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2");
    EXPECT_EQ(Executa({"check", m_caminho}), 1);
    EXPECT_THAT(m_saida, HasSubstr("\nz-gt: CRZ 2: "));
    EXPECT_THAT(m_saida, EndsWith("2 Z reductions: 1 finding, 2 notes\n"));
}

TEST_F(ComandoCheck, JsonForPrograms)
{
    Escreve(DIAS_LIMPOS);
    Escreve("UPDATE reducao_z SET valor_gt = 75.47 WHERE cont_crz = 2");
    EXPECT_EQ(Executa({"check", "--json", m_caminho}), 1);
    const nlohmann::json json = nlohmann::json::parse(m_saida);
    EXPECT_THAT(json["findings"], SizeIs(3));
    EXPECT_EQ(json["findings"][1],
              nlohmann::json::parse(R"({"kind": "z-gt", "weight": "finding", "key": "CRZ 2",
                "text": "grand total from 68.48 to 75.47, gross sales 7.00", "explained": false})"));
    EXPECT_EQ(json["summary"],
              nlohmann::json::parse(R"({"fiscal_receipts": 7, "non_fiscal_receipts": 4,
                "z_reductions": 2, "findings": 1, "explained": 0, "notes": 2})"));
}

TEST_F(ComandoCheck, JsonOfNothingFound)
{
    EXPECT_EQ(Executa({"check", "--json", m_caminho}), 0);
    EXPECT_THAT(nlohmann::json::parse(m_saida)["findings"], IsEmpty());
}

TEST_F(ComandoCheck, TheLogListsTheLostRows)
{
    const std::string log = Arquivo(
        "log",
        "2024-03-01 08:00:00\tDBLoggerExecuteSQL: Erro executando SQL Code. Comando:'3', "
        "Erro:'no such table'\n"
        "2024-03-01 08:00:00\tUPDATE item_cupom_fiscal SET id_cancelado = 'S' where cont_coo "
        "= '5' and seq_item = '2'\n"
        "2024-03-01 08:00:01\tLogDatabase: the rows of this command are lost: disk I/O "
        "error\n");
    EXPECT_EQ(Executa({"check", m_caminho, "--log", log}), 1);
    EXPECT_EQ(m_saida,
              "linha-perdida: item_cupom_fiscal cont_coo 5, seq_item 2: UPDATE of "
              "item_cupom_fiscal by command 3 was rejected: no such table\n"
              "comando-perdido: 2024-03-01 08:00:01: the rows of a command are lost: disk I/O "
              "error\n"
              "0 fiscal receipts, 0 non-fiscal receipts, 0 Z reductions: 2 findings, 0 notes\n");
}

TEST_F(ComandoCheck, ATextOfTheDatabaseStaysOnOneLine)
{
    Escreve("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, data_movimento) VALUES"
            " (1, 1, '2024-03-01 09:00:00', '2024' || char(10, 7, 27) || 'x');"
            "INSERT INTO cupom_nf (cont_coo, cont_crz, data_hora_emissao) VALUES (2, 1, 'a')");
    EXPECT_EQ(Executa({"check", m_caminho}), 1);
    EXPECT_THAT(m_saida, HasSubstr("day of 2024???x, first receipt COO 2"));
}

TEST_F(ComandoCheck, TheDatabaseIsLeftAsItWas)
{
    Escreve(DIAS_LIMPOS);
    const auto conteudo = [this] {
        std::ostringstream texto;
        texto << std::ifstream(m_caminho, std::ios::binary).rdbuf();
        return texto.str();
    };
    const std::string antes = conteudo();
    Executa({"check", m_caminho});
    EXPECT_EQ(conteudo(), antes);
}

TEST_F(ComandoCheck, SaysWhatItCannotRead)
{
    EXPECT_EQ(Recusa({"check", m_pasta + "/none.db"}), m_pasta + "/none.db: no such file");
    EXPECT_EQ(Recusa({"check", m_pasta}), m_pasta + ": not a file");
    EXPECT_THAT(Recusa({"check", Arquivo("empty", "")}),
                EndsWith("no such table: outros_documentos"));
    EXPECT_THAT(Recusa({"check", Arquivo("text", std::string(5000, 'x'))}),
                EndsWith(": file is not a database"));
    EXPECT_THAT(Recusa({"check", m_caminho, "--log", m_pasta + "/none.log"}),
                StartsWith("cannot read the firmware log "));
}

TEST_F(ComandoCheck, SaysWhichTableAnotherProgramsDatabaseLacks)
{
    Escreve("DROP TABLE moeda");
    EXPECT_THAT(Recusa({"check", m_caminho}),
                EndsWith(": not a logging database: no such table: moeda"));
    Escreve("CREATE TABLE moeda (x)");
    EXPECT_THAT(Recusa({"check", m_caminho}),
                EndsWith(": not a logging database: no such column: num_ecf"));
}

TEST_F(ComandoCheck, ADamagedDatabaseIsUnusable)
{
    Escreve(DIAS_LIMPOS);
    std::ostringstream texto;
    texto << std::ifstream(m_caminho, std::ios::binary).rdbuf();
    std::string bytes = texto.str();
    // The header and the schema stand; every other page is noise.
    const std::size_t inicio = 4096 * 6;
    ASSERT_GT(bytes.size(), inicio);
    for (std::size_t i = inicio; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i * 37 + i / 256);
    }
    EXPECT_THAT(Recusa({"check", Arquivo("damaged.db", bytes)}),
                HasSubstr("database disk image is malformed"));
}

TEST_F(ComandoCheck, TheHelpNamesEveryKind)
{
    int codigo = EXIT_OK;
    CLI::App app;
    AddCheck(app, codigo);
    const std::string ajuda = app.get_subcommand("check")->help();
    for (const TipoAchado& tipo : TiposDeAchado()) {
        EXPECT_THAT(ajuda, HasSubstr(std::string("  ") + tipo.nome + " "));
    }
}

class ExemploConferido : public ComandoCheck, public testing::WithParamInterface<const char*>
{
};

// The examples are clean but for the rows that their log says are lost, and what follows of those.
TEST_P(ExemploConferido, IsCleanButForWhatItsLogNames)
{
    const std::string banco = m_pasta + "/exemplo.db";
    const std::string log = m_pasta + "/exemplo.log";
    ASSERT_EQ(Executa({"run", std::string(ECF_SOURCE_DIR "/examples/") + GetParam() + ".jsonl",
                       "--db", banco, "--log", log}),
              0);
    Executa({"check", banco, "--log", log});
    std::vector<std::string> linhas = Linhas();
    ASSERT_GE(linhas.size(), 1U);
    EXPECT_THAT(linhas.back(), HasSubstr(" fiscal receipts, "));
    linhas.pop_back();
    EXPECT_THAT(linhas, Each(AnyOf(StartsWith("note: "), StartsWith("linha-perdida: "),
                                   EndsWith(" [a lost row in the log explains it]"))));
}

INSTANTIATE_TEST_SUITE_P(Check, ExemploConferido,
                         testing::Values("mercearia", "oficina", "primeira_semana"),
                         [](const auto& caso) { return std::string(caso.param); });

} // namespace
} // namespace bancada
