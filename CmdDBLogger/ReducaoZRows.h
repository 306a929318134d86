// The rows of a Z reduction, one operation a kind of row.
#pragma once

#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

// Each operation writes its rows and answers FALSE as soon as an execution reports 0. All totals
// are those of the day that the reduction has closed.
class ReducaoZRows
{
  public:
    ReducaoZRows(CmdReducaoZ& command, sqlite3* db)
        : m_command(command), m_controller(*command.FDController), m_db(db)
    {
    }

    BOOL Reducao();
    BOOL AliquotasICMS();
    BOOL AliquotasISSQN();
    BOOL EspeciaisICMS();
    BOOL EspeciaisISSQN();
    BOOL DescontosAcrescimosCancelamentos();
    BOOL NaoFiscais();
    BOOL MeiosDePagamento();
    BOOL Troco(); // after MeiosDePagamento

  private:
    BOOL Aliquota(const char* codePattern, int taxBase, int i);
    BOOL Especial(const char* code, BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase, int i);
    BOOL Soma(const char* pattern, const Financial& val);
    BOOL NaoFiscal(int i);
    BOOL MeioDePagamento(int i);

    CmdReducaoZ& m_command;
    FiscalDataController& m_controller;
    sqlite3* m_db;
    int m_nMaxFP = 0; // number of payment means
    Statement<SQL_SIZE> m_insert;
};
