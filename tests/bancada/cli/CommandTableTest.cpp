// The table of the commands, and the page that holds it.
#include "bancada/cli/CommandTable.h"
#include "tests/support/Files.h"

#include <gmock/gmock.h>
#include <string>

namespace
{

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(CommandTable, ThePageHoldsTheCataloguesOwn)
{
    const std::string page = test_support::ReadFile(ECF_SOURCE_DIR "/docs/commands.md");
    EXPECT_TRUE(page == bancada::WithCommandTable(page))
        << "docs/commands.md and the catalogue differ. This rewrites it: ecf-bancada commands --into "
           "docs/commands.md";
}

TEST(CommandTable, HasOneRowACommand)
{
    const std::string table = bancada::CommandTable();
    EXPECT_THAT(table, StartsWith("| command | class | code | tables written | document type |\n"
                                  "|---|---|---|---|---|\n"
                                  "| `abre_cupom` | `CmdAbreCupom` | 1 | `cupom_fiscal` | |\n"));
    EXPECT_THAT(table, HasSubstr("| `leitura_x` | `CmdLeituraX` | 20 | `outros_documentos` | `LX` "
                                 "|\n"));
    EXPECT_THAT(table, HasSubstr("| `programa_loja` | `CmdProgramaLoja` | 91 | | |\n"));
    EXPECT_THAT(table, HasSubstr("| `programa_nr_serie` | `CmdProgramaNrSerie` | 257 | "
                                 "`dados_ecf`, `versao_sb` | |\n"));
}

} // namespace
