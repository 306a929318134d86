// Faults put into the clean days, each with everything that must be found of it.
#pragma once

#include "tests/bancada/conferencia/CheckedDatabase.h"

#include <initializer_list>
#include <ostream>
#include <string>
#include <vector>

namespace bancada::conferencia_test
{

// What is noted of the clean days.
inline const std::vector<std::string> CLEAN_NOTES = {
    "cupom-adicional: COO 11: paid 10.00, closing never written",
    "documento-sem-linha: GNF 3: reversal of a voucher (COO 6) before COO 10",
};

struct PlantedFault {
    const char* name;
    const char* sql;
    // All of them, in their order.
    std::vector<std::string> faults;
    std::vector<std::string> notes = CLEAN_NOTES;
};

// The faults that the tests of one check plant. Those of all tests are known together, so that no
// kind of finding is left out.
class PlantedFaults
{
  public:
    PlantedFaults(std::initializer_list<PlantedFault> faults) : m_faults(faults)
    {
        All().insert(All().end(), faults.begin(), faults.end());
    }

    auto Begin() const { return m_faults.begin(); }
    auto End() const { return m_faults.end(); }

    static std::vector<PlantedFault>& All()
    {
        static std::vector<PlantedFault> all;
        return all;
    }

  private:
    std::vector<PlantedFault> m_faults;
};

inline void PrintTo(const PlantedFault& planted, std::ostream* out)
{
    *out << planted.name;
}

inline std::string NameOf(const testing::TestParamInfo<PlantedFault>& planted)
{
    return planted.param.name;
}

// Its test stands in ConferenciaTest.cpp.
class Planted : public CheckedDatabase, public testing::WithParamInterface<PlantedFault>
{
};

} // namespace bancada::conferencia_test
