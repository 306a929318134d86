// The rows of a Z reduction, one operation a kind of row.
#pragma once

#include "CmdDBLogger/StatementComposer.h"
#include "FiscalCommands.h"
#include "FiscalData/FiscalDataController.h"

// Each operation writes its rows and answers FALSE as soon as an execution reports 0. All totals
// are those of the day that the reduction has closed.
struct ReducaoZRows {
    ReducaoZRows(CmdReducaoZ& reducao, sqlite3* database)
        : command(reducao), FDController(reducao.FDController), db(database)
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

    // The accounting bases of the closed day, and the tax bases of the fiscal one.
    static constexpr int RZ = BC_IND_FISCAL_ULTIMA_RZ;
    static constexpr int RZ_NF = BC_IND_NAO_FISCAL_ULTIMA_RZ;
    static constexpr BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES ICMS = BC_IND_FISCAL_BI_IND_ICMS;
    static constexpr BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES ISSQN = BC_IND_FISCAL_BI_IND_ISSQN;

    // A sum over a tax base.
    using SomaDaBase = Financial (FiscalDataController::*)(int base, int taxBase);

    BOOL Aliquotas(const TaxCodePattern& codePattern, int taxBase);
    BOOL Aliquota(const TaxCodePattern& codePattern, int taxBase, int i);
    // The three codes of a tax base, each of one or two letters.
    BOOL Especiais(const char (&codes)[3][3], BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase);
    BOOL Especial(const char* code, BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase, int i);
    BOOL Soma(const IntegerPattern& pattern, SomaDaBase soma, int taxBase);
    BOOL NaoFiscal(int i);
    BOOL MeioDePagamento(int i);

    CmdReducaoZ& command;
    FiscalDataController* const FDController;
    sqlite3* const db;
    int meios = 0; // positions of payment means, programmed or not
    Statement<SQL_SIZE> sql;
};
