// The table of the kinds of findings.
#include "bancada/conferencia/FindingKind.h"

#include "tests/bancada/conferencia/PlantedFault.h"

#include <set>

namespace bancada::conferencia_test
{
namespace
{

using namespace conferencia;

TEST(FindingKinds, EachIsPlantedByATest)
{
    // Those that a log alone gives are planted in LossIndexTest.cpp, what is known from outside in
    // CheckTest.cpp, what takes a signature in CheckAssinaturasTest.cpp.
    std::set<std::string> planted = {"linha-perdida", "perda-prevista", "comando-perdido",
                                     "ancora",        "emenda",         "cupom-assinatura"};
    const auto add = [&planted](const std::vector<std::string>& findings) {
        for (const std::string& finding : findings) {
            planted.insert(finding.substr(0, finding.find(':')));
        }
    };
    for (const PlantedFault& fault : PlantedFaults::All()) {
        add(fault.faults);
        add(fault.notes);
    }
    std::set<std::string> kinds;
    for (const FindingKindInfo& info : FindingKinds()) {
        EXPECT_TRUE(kinds.insert(info.name).second) << info.name << " stands twice";
    }
    EXPECT_EQ(planted, kinds);
}

TEST(FindingKinds, AreFoundByThemselves)
{
    for (const FindingKindInfo& info : FindingKinds()) {
        EXPECT_EQ(InfoOf(info.kind).name, info.name);
        EXPECT_STRNE(info.meaning, "");
        EXPECT_STRNE(NextStepOf(info.kind), "");
    }
    EXPECT_STREQ(InfoOf(FindingKind::COO_AUSENTE).name, "coo-ausente");
    EXPECT_STREQ(InfoOf(FindingKind::PERDA_PREVISTA).name, "perda-prevista");
}

} // namespace
} // namespace bancada::conferencia_test
