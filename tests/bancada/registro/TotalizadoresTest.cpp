// Where the totalizers of a tax base lie.
#include "tests/bancada/registro/RegistroTest.h"

namespace bancada
{
namespace
{

class RegistroTotalizadores : public RegistroTest
{
};

TEST_F(RegistroTotalizadores, EverySpecialTotalizerHasAPlaceOfItsOwn)
{
    struct {
        const char* codigo;
        BASE_CONTABIL_FISCAL_BASE_IMPOSTO_INDEXES imposto;
        int first;
    } const cases[] = {
        {"F", BC_IND_FISCAL_BI_IND_ICMS, 30},   {"I", BC_IND_FISCAL_BI_IND_ICMS, 33},
        {"N", BC_IND_FISCAL_BI_IND_ICMS, 36},   {"FS", BC_IND_FISCAL_BI_IND_ISSQN, 30},
        {"IS", BC_IND_FISCAL_BI_IND_ISSQN, 33}, {"NS", BC_IND_FISCAL_BI_IND_ISSQN, 36},
    };
    for (const auto& item : cases) {
        std::string codigo = item.codigo;
        for (int numero = 1; numero <= 3; ++numero) {
            EXPECT_EQ(registro.ResolveTotIndex(item.imposto, codigo.data(), numero),
                      item.first + numero - 1)
                << codigo << numero;
        }
        EXPECT_EQ(registro.ResolveTotIndex(item.imposto, codigo.data(), 0), -1);
        EXPECT_EQ(registro.ResolveTotIndex(item.imposto, codigo.data(), 4), -1);
    }
    std::string f = "F";
    EXPECT_EQ(registro.ResolveTotIndex(BC_IND_FISCAL_BI_IND_ISSQN, f.data(), 1), -1);
    std::string t = "T";
    EXPECT_EQ(registro.ResolveTotIndex(BC_IND_FISCAL_BI_IND_ICMS, t.data(), 1), -1);
    EXPECT_EQ(registro.Totalizador_GetTotProgramado(2, 0, -1), 0);
}

} // namespace
} // namespace bancada
