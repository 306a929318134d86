// A bench at work: tape lines run on a register that logs into a database in memory.
#pragma once

#include "bancada/caixa/Caixa.h"
#include "bancada/comandos/Catalogue.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

// What a person would notice of a register: counters, totals, the receipt, the day, its
// programming.
std::string Portrait(const bancada::Registro& registro);

class ComandoTest : public ::testing::Test
{
  protected:
    // A day begins: 2024-03-04 08:00:00. Every command starts one second after the one before.
    static constexpr UINT32 EIGHT = 1709539200;

    // Makes the command of a tape line and fills its fields.
    std::unique_ptr<bancada::ComandoBancada> Read(const std::string& line);

    // Runs a tape line that the register must execute.
    void Run(const std::string& line);
    // Runs one that it must refuse; answers why.
    [[nodiscard]] std::string Refused(const std::string& line);

    std::vector<std::string> Rows(const std::string& sql);

    // Rates T1 18.00 and S2 5.00, F1; means 1 DINHEIRO, 2 CARTAO with voucher; totalizer 3 RECARGA.
    void Programa();
    // Opens a receipt and sells 2 x 10.00 and 1.500 x 5.99 = 8.98: 28.98.
    void AbreCupomAndVende();
    // The same paid with 30.00 in cash, and closed.
    void EmiteCupom();

    bancada::Caixa caixa{":memory:"};
    bancada::Registro& registro = caixa.GetRegistro();
    bancada::LogDatabase& database = caixa.Database();
    bancada::FirmwareLog& log = caixa.Log();
    UINT32 now = EIGHT;
};

// The same with its programming done.
class ProgrammedComandoTest : public ComandoTest
{
  protected:
    static constexpr const char* DOCUMENTOS =
        "SELECT cont_coo, cont_gnf, cont_grg, cont_cdc, cont_crz, id_tipo_documento FROM "
        "outros_documentos ORDER BY rowid";

    void SetUp() override { Programa(); }
};
