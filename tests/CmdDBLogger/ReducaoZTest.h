// A Z reduction on a day that the test programs. Without any of it the day has neither totalizers
// nor payment means.
#pragma once

#include "FiscalCommands.h"
#include "tests/CmdDBLogger/EmptyRegister.h"
#include "tests/CmdDBLogger/LoggerTest.h"

class ReducaoZTest : public LoggerTest
{
  protected:
    ReducaoZTest()
    {
        ScriptEmptyDay(fiscal);
        fiscal.SetCounter(COUNTER_COO, 321);
        fiscal.SetCounter(COUNTER_CRZ, 12);
        fiscal.SetCounter(COUNTER_CRO, 3);
        fiscal.SetCounter(COUNTER_GNF, 45);
        fiscal.SetCounter(COUNTER_CDC, 7);
        fiscal.SetCounter(COUNTER_GRG, 6);
    }

    // Programs a totalizer of the closed day; `taxBase` 0 is ICMS, 1 is ISSQN.
    void Programa(int taxBase, int position, int rate, const std::string& value,
                  const std::string& tax)
    {
        const std::string at =
            "(2," + std::to_string(taxBase) + "," + std::to_string(position) + ")";
        fiscal.numbers["Totalizador_GetTotProgramado" + at] = 1;
        fiscal.numbers["Totalizador_GetTotPercTrib" + at] = rate;
        fiscal.money["Totalizador_GetTot" + at] = Money(value);
        fiscal.money["Totalizador_GetTotTrib" + at] = Money(tax);
    }

    // Programs a special totalizer, which has no rate and no tax, at the position that its code is
    // resolved to.
    void ProgramaEspecial(int taxBase, int position, const std::string& value)
    {
        const std::string at =
            "(2," + std::to_string(taxBase) + "," + std::to_string(position) + ")";
        fiscal.numbers["Totalizador_GetTotProgramado" + at] = 1;
        fiscal.money["Totalizador_GetTot" + at] = Money(value);
    }

    void ProgramaNaoFiscal(int position, int flag, const std::string& name,
                           const std::string& value)
    {
        const std::string at = "(3," + std::to_string(position) + ")";
        fiscal.numbers["Totalizador_GetTotNFProgramado" + at] = flag;
        fiscal.texts["Totalizador_GetNomeNF" + at] = name;
        fiscal.money["Totalizador_GetTotalNF" + at] = Money(value);
    }

    void ProgramaMeio(int position, const std::string& name, const std::string& value)
    {
        const std::string at = "(" + std::to_string(position) + ")";
        fiscal.numbers["BaseFormasPagamento_GetMeioPagamentoProgramado" + at] = 1;
        fiscal.texts["BaseFormasPagamento_GetMeioPagamento" + at] = name;
        fiscal.money["BaseFormasPagamento_GetFPTotal" + at] = Money(value);
    }

    CmdReducaoZ command = NewCommand<CmdReducaoZ>();

    // Logs the reduction, which must end well.
    void Reduz()
    {
        Forget();
        EXPECT_EQ(command.DBLogger(db), TRUE);
    }

    // The statements from `first` on, `count` of them.
    std::vector<std::string> StatementsFrom(std::size_t first, std::size_t count) const
    {
        if (Statements().size() < first + count) {
            return {"only " + std::to_string(Statements().size()) + " statements"};
        }
        const auto begin = Statements().begin() + static_cast<std::ptrdiff_t>(first);
        return {begin, begin + static_cast<std::ptrdiff_t>(count)};
    }
};
