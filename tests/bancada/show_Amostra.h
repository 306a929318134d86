// The sample database of the show command's tests.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "bancada/Unusable.h"
#include "bancada/banco/LogSchema.h"
#include "bancada/relatorio/Show.h"

namespace bancada::show_test
{

class Amostra : public ::testing::Test
{
  protected:
    void SetUp() override
    {
        const auto* teste = ::testing::UnitTest::GetInstance()->current_test_info();
        m_pasta = std::filesystem::path(::testing::TempDir()) /
                  (std::string("show_") + teste->test_suite_name() + "_" + teste->name());
        std::filesystem::remove_all(m_pasta);
        std::filesystem::create_directories(m_pasta);
    }
    void TearDown() override { std::filesystem::remove_all(m_pasta); }

    std::string Caminho(const char* nome) const { return (m_pasta / nome).string(); }
    std::string Banco() const { return Caminho("registro.db"); }

    // Runs SQL on the database, which is made empty of rows when it is not there.
    void Grava(const std::string& sql)
    {
        const bool novo = !std::filesystem::exists(Banco());
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(Banco().c_str(), &db), SQLITE_OK);
        const std::string tudo = "BEGIN;" + (novo ? std::string(LOG_SCHEMA) : "") + sql + ";COMMIT";
        char* motivo = nullptr;
        const int rc = sqlite3_exec(db, tudo.c_str(), nullptr, nullptr, &motivo);
        EXPECT_EQ(rc, SQLITE_OK) << (motivo ? motivo : "");
        sqlite3_free(motivo);
        sqlite3_close(db);
    }

    void GravaAmostra()
    {
        Grava(Le(std::string(ECF_SOURCE_DIR) + "/tests/bancada/show_amostra.sql"));
    }

    static std::string Le(const std::string& caminho)
    {
        std::ifstream arquivo(caminho, std::ios::binary);
        EXPECT_TRUE(arquivo) << caminho;
        return {std::istreambuf_iterator<char>(arquivo), {}};
    }

    enum Resultado {
        SHOWN,
        NOT_THERE,
        UNUSABLE,
    };

    // Shows and keeps the result and both outputs.
    void Mostra(ShowOptions options)
    {
        if (options.database.empty()) {
            options.database = Banco();
        }
        std::ostringstream saida;
        std::ostringstream erros;
        try {
            resultado = Show(options, saida, erros) ? SHOWN : NOT_THERE;
        } catch (const Unusable& inutil) {
            resultado = UNUSABLE;
            erros << inutil.what();
        }
        texto = saida.str();
        erro = erros.str();
    }
    void MostraCoo(std::int64_t coo)
    {
        ShowOptions options;
        options.coo = coo;
        Mostra(options);
    }
    void MostraCrz(std::int64_t crz)
    {
        ShowOptions options;
        options.crz = crz;
        Mostra(options);
    }

    Resultado resultado = SHOWN;
    std::string texto;
    std::string erro;

  private:
    std::filesystem::path m_pasta;
};

} // namespace bancada::show_test
