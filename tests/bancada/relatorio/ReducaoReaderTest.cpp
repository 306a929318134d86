// Z reductions with their rows.
#include <string>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/bancada/relatorio/ShowTest.h"

namespace bancada::show_test
{
namespace
{

using Json = nlohmann::json;

using ReducaoReaderShow = Sample;

TEST_F(ReducaoReaderShow, ReductionsOfOneNumberHaveTheirOwnRows)
{
    WriteSample();
    Write("INSERT INTO reducao_z (cont_crz, cont_coo, data_hora_emissao, valor_vb)"
          " VALUES (1, 500, '2050-01-01 22:00:00', 3);"
          "INSERT INTO totalizador_reducao VALUES (1, '01T18.00', 3, 'S', 0.54),"
          " (1, 'Can-S', 0, 'S', 0);"
          "INSERT INTO meio_pagamento_reducao VALUES (21, 1, 'TROCO', 0.25);");
    ShowOptions options;
    options.crz = 1;
    const Json json = ShowJson(options);
    ASSERT_EQ(json["reducoes"].size(), 2U);
    EXPECT_EQ(json["reducoes"][0]["totalizadores"].size(), 13U);
    EXPECT_EQ(json["reducoes"][0]["meios_pagamento"].size(), 4U);
    EXPECT_EQ(json["reducoes"][1]["totalizadores"].size(), 2U);
    EXPECT_EQ(json["reducoes"][1]["totalizadores"][0]["valor"], "3.00");
    EXPECT_EQ(json["reducoes"][1]["meios_pagamento"][0]["valor"], "0.25");
}

} // namespace
} // namespace bancada::show_test
