// The catalogue, described: what the documents say is what the commands read.
#include "bancada/cli/HelpTape.h"
#include "bancada/Unusable.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/comandos/Configura.h"
#include "bancada/registro/Registro.h"
#include "bancada/tape/FieldTable.h"
#include "bancada/tape/LineParser.h"
#include "bancada/tape/TapeFields.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

using namespace bancada;

namespace
{

TEST(HelpTape, TheDocumentHoldsTheCommandsAsTheyAre)
{
    const std::string document = test_support::ReadFile(ECF_SOURCE_DIR "/docs/tape.md");
    EXPECT_TRUE(document == WithTapeDescription(document))
        << "docs/tape.md is behind the commands; run ecf-bancada help-tape --into docs/tape.md";
}

TEST(HelpTape, EveryExampleIsALineThatItsCommandReads)
{
    for (const CatalogueEntry& item : Catalogue()) {
        Registro registro;
        FieldTable table;
        item.make(registro)->Fields(table);
        const TapeLine line = ParseLine(ExampleLine(item.name, table.Fields()), "example", 1);
        TapeCommand command;
        command.name = item.name;
        command.fields.assign(line.fields.begin() + 1, line.fields.end()); // without cmd
        TapeFields fields(command);
        EXPECT_NO_THROW({
            item.make(registro)->Fields(fields);
            fields.Finish();
        }) << item.name;
        EXPECT_EQ(command.fields.size(), table.Fields().size()) << item.name;
    }
}

TEST(HelpTape, EveryFieldIsExplained)
{
    for (const CatalogueEntry& item : Catalogue()) {
        Registro registro;
        FieldTable table;
        item.make(registro)->Fields(table);
        for (const FieldDescription& field : table.Fields()) {
            EXPECT_FALSE(field.doc.empty()) << item.name << "." << field.name;
            EXPECT_EQ(field.doc.find('\n'), std::string::npos) << item.name << "." << field.name;
            if (field.presence == Presence::OPTIONAL) {
                EXPECT_FALSE(field.byDefault.empty()) << item.name << "." << field.name;
            }
        }
    }
}

TEST(HelpTape, OneCommandIsDescribedByItself)
{
    EXPECT_EQ(DescribeCommand("cancela_item").substr(0, 19), "### `cancela_item`\n");
    EXPECT_EQ(DescribeCommand("configura").substr(0, 16), "### `configura`\n");
    EXPECT_THROW(static_cast<void>(DescribeCommand("vende")), Unusable);
}

TEST(HelpTape, ADocumentWithoutBothMarkersIsRefused)
{
    EXPECT_THROW(WithTapeDescription("text"), std::invalid_argument);
    EXPECT_THROW(WithTapeDescription("<!-- commands: begin -->\n"), std::invalid_argument);
    EXPECT_THROW(WithTapeDescription("<!-- commands: end --><!-- commands: begin -->\n"),
                 std::invalid_argument);
    EXPECT_EQ(WithTapeDescription("a\n<!-- commands: begin -->\nold\n<!-- commands: end -->\nb"),
              "a\n<!-- commands: begin -->\n" + DescribeTape() + "<!-- commands: end -->\nb");
}

} // namespace
