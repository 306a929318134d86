// A bench at work: tape lines run on a register that logs into a database in memory.
#pragma once

#include "bancada/banco/LogDatabase.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/comandos/Executor.h"
#include "bancada/log/FirmwareDuty.h"
#include "bancada/log/FirmwareLog.h"
#include "bancada/registro/Registro.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

// The rows of a query, each as its values joined by '|'; NULL is written NULL.
std::vector<std::string> Linhas(sqlite3* db, const std::string& sql);

// What a person would notice of a register: counters, totals, the receipt, the day, its
// programming.
std::string Retrato(const bancada::Registro& registro);

class ComandosTest : public ::testing::Test
{
  protected:
    // A day begins: 2024-03-04 08:00:00. Every command starts one second after the one before.
    static constexpr UINT32 OITO_HORAS = 1709539200;

    // Makes the command of a tape line and fills its fields.
    std::unique_ptr<bancada::ComandoBancada> Le(const std::string& linha);

    // Runs a tape line that the register must execute, or must refuse (the refusal's text).
    void Roda(const std::string& linha);
    std::string Recusa(const std::string& linha);

    std::vector<std::string> Linhas(const std::string& sql);

    // Rates T1 18.00 and S2 5.00, F1; means 1 DINHEIRO, 2 CARTAO with voucher; totalizer 3 RECARGA.
    void Programa();
    // Opens a receipt and sells 2 x 10.00 and 1.500 x 5.99 = 8.98: 28.98.
    void Vende();
    // The same paid with 30.00 in cash, and closed.
    void EmiteCupom();

    bancada::FirmwareLog log;
    bancada::LogDatabase banco{":memory:", log};
    bancada::Registro registro;
    bancada::FirmwareDuty plantao{log, [this] { return registro.GetRatearSubtotal(); }};
    bancada::Executor executor{registro, banco};
    UINT32 agora = OITO_HORAS;
};
