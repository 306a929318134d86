// The totalizador_reducao rows of a Z reduction.
//
// Their statements name the same columns in two orders: one for the tax rates, one for all others.
#include "CmdDBLogger/ReducaoZRows.h"

#include <cstring>

namespace
{

constexpr int ALIQUOTAS = 30;   // positions of tax rates in a tax base
constexpr int ESPECIAIS = 3;    // special totalizers of a code
constexpr int NAO_FISCAIS = 39; // positions of non-fiscal totalizers

} // namespace

BOOL ReducaoZRows::Aliquota(const TaxCodePattern& codePattern, int taxBase, int i)
{
    if (FDController->Totalizador_GetTotProgramado(RZ, taxBase, i) == FALSE) {
        return TRUE;
    }

    sql.Begin("INSERT INTO totalizador_reducao(cont_crz, totalizador, valor_base_calculo, "
              "id_fiscal, valor_imposto) VALUES(");
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_CRZ)); // cont_crz
    const int rate = FDController->Totalizador_GetTotPercTrib(RZ, taxBase, i);
    sql.TaxCode(codePattern, i + 1, rate);                                  // totalizador
    sql.MoneyText("%s,", FDController->Totalizador_GetTot(RZ, taxBase, i)); // valor_base_calculo
    sql.Piece("'S',");                                                      // id_fiscal
    sql.MoneyText("%s)", FDController->Totalizador_GetTotTrib(RZ, taxBase, i)); // valor_imposto
    return sql.Execute(command, db);
}

BOOL ReducaoZRows::Aliquotas(const TaxCodePattern& codePattern, int taxBase)
{
    for (int i = 0; i < ALIQUOTAS; ++i) {
        if (Aliquota(codePattern, taxBase, i) == FALSE) {
            return FALSE;
        }
    }
    return TRUE;
}

BOOL ReducaoZRows::AliquotasICMS()
{
    return Aliquotas("'%02dT%02d.%02d',", ICMS);
}

BOOL ReducaoZRows::AliquotasISSQN()
{
    return Aliquotas("'%02dS%02d.%02d',", ISSQN);
}

BOOL ReducaoZRows::Especial(const char* code, BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase,
                            int i)
{
    std::strcpy(sql.aux, code);
    const int at = FDController->ResolveTotIndex(taxBase, sql.aux, i);
    if (FDController->Totalizador_GetTotProgramado(RZ, taxBase, at) == FALSE) {
        return TRUE;
    }

    sql.Begin("INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, "
              "id_fiscal, valor_imposto) VALUES(");
    sql.TextAt("'%s", code); // totalizador
    sql.Integer("%d',", i);
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_CRZ));             // cont_crz
    sql.MoneyText("%s,", FDController->Totalizador_GetTot(RZ, taxBase, at)); // valor_base_calculo
    sql.Piece("'S',"                                                         // id_fiscal
              "0)");                                                         // valor_imposto
    return sql.Execute(command, db);
}

BOOL ReducaoZRows::Especiais(const char (&codes)[3][3],
                             BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES taxBase)
{
    for (int i = 1; i <= ESPECIAIS; ++i) {
        for (const char* code : codes) {
            if (Especial(code, taxBase, i) == FALSE) {
                return FALSE;
            }
        }
    }
    return TRUE;
}

BOOL ReducaoZRows::EspeciaisICMS()
{
    static constexpr char CODES[][3] = {"F", "I", "N"};
    return Especiais(CODES, ICMS);
}

BOOL ReducaoZRows::EspeciaisISSQN()
{
    static constexpr char CODES[][3] = {"FS", "IS", "NS"};
    return Especiais(CODES, ISSQN);
}

BOOL ReducaoZRows::Soma(const IntegerPattern& pattern, SomaDaBase soma, int taxBase)
{
    sql.Begin("INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, "
              "id_fiscal, valor_imposto) VALUES(");
    sql.Integer(pattern, FDController->Contador_Get(COUNTER_CRZ)); // totalizador, cont_crz
    sql.MoneyText("%s,", (FDController->*soma)(RZ, taxBase));      // valor_base_calculo
    sql.Piece("'S',"                                               // id_fiscal
              "0)");                                               // valor_imposto
    return sql.Execute(command, db);
}

BOOL ReducaoZRows::DescontosAcrescimosCancelamentos()
{
    constexpr SomaDaBase DESC = &FiscalDataController::Totalizador_GetSoma_Tot_Desc;
    constexpr SomaDaBase ACR = &FiscalDataController::Totalizador_GetSoma_Tot_Acr;
    constexpr SomaDaBase CANC = &FiscalDataController::Totalizador_GetSoma_Tot_Canc;

    return Soma("'DT',%d,", DESC, ICMS) != FALSE && Soma("'DS',%d,", DESC, ISSQN) != FALSE &&
           Soma("'AT',%d,", ACR, ICMS) != FALSE && Soma("'AS',%d,", ACR, ISSQN) != FALSE &&
           Soma("'Can-T',%d,", CANC, ICMS) != FALSE && Soma("'Can-S',%d,", CANC, ISSQN) != FALSE;
}

BOOL ReducaoZRows::NaoFiscal(int i)
{
    if (FDController->Totalizador_GetTotNFProgramado(RZ_NF, i) <= 0) {
        return TRUE;
    }

    sql.Begin("INSERT INTO totalizador_reducao(totalizador, cont_crz, valor_base_calculo, "
              "id_fiscal, valor_imposto) VALUES(");
    FDController->Totalizador_GetNomeNF(RZ_NF, i, sql.aux, AUX_SIZE);
    sql.Text("'%s',", sql.aux);                                           // totalizador
    sql.Integer("%d,", FDController->Contador_Get(COUNTER_CRZ));          // cont_crz
    sql.MoneyText("%s,", FDController->Totalizador_GetTotalNF(RZ_NF, i)); // valor_base_calculo
    sql.Piece("'N',"                                                      // id_fiscal
              "0)");                                                      // valor_imposto
    return sql.Execute(command, db);
}

BOOL ReducaoZRows::NaoFiscais()
{
    for (int i = 0; i < NAO_FISCAIS; ++i) {
        if (NaoFiscal(i) == FALSE) {
            return FALSE;
        }
    }
    return TRUE;
}
