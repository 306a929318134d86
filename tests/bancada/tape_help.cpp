// The catalogue, described: what the documents say is what the commands read.
#include "bancada/Unusable.h"
#include "bancada/cli/Configura.h"
#include "bancada/cli/TapeHelp.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/fita/FieldTable.h"
#include "bancada/fita/LineParser.h"
#include "bancada/fita/TapeFields.h"
#include "bancada/registro/Registro.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>
#include <string>

using namespace bancada;

namespace
{

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TEST(TapeHelp, TheDocumentHoldsTheCommandsAsTheyAre)
{
    const std::string document = ReadFile(ECF_SOURCE_DIR "/docs/tape.md");
    EXPECT_TRUE(document == WithTapeHelp(document))
        << "docs/tape.md is behind the commands; run ecf-bancada help-tape --into docs/tape.md";
}

TEST(TapeHelp, EveryExampleIsALineThatItsCommandReads)
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

TEST(TapeHelp, EveryFieldIsExplained)
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

TEST(TapeHelp, OneCommandIsDescribedByItself)
{
    EXPECT_EQ(CommandHelp("cancela_item").substr(0, 19), "### `cancela_item`\n");
    EXPECT_EQ(CommandHelp("configura").substr(0, 16), "### `configura`\n");
    EXPECT_THROW(CommandHelp("vende"), Unusable);
}

TEST(TapeHelp, ADocumentWithoutBothMarkersIsRefused)
{
    EXPECT_THROW(WithTapeHelp("text"), std::invalid_argument);
    EXPECT_THROW(WithTapeHelp("<!-- commands: begin -->\n"), std::invalid_argument);
    EXPECT_THROW(WithTapeHelp("<!-- commands: end --><!-- commands: begin -->\n"),
                 std::invalid_argument);
    EXPECT_EQ(WithTapeHelp("a\n<!-- commands: begin -->\nold\n<!-- commands: end -->\nb"),
              "a\n<!-- commands: begin -->\n" + TapeHelp() + "<!-- commands: end -->\nb");
}

} // namespace
