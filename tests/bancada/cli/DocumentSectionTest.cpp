// The sections of documents that the program writes itself.
#include "bancada/cli/DocumentSection.h"
#include "bancada/Unusable.h"
#include "bancada/cli/CommandTable.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace
{

TEST(DocumentSection, ReplacesWhatStandsBetweenTheMarkers)
{
    EXPECT_EQ(bancada::WithSection("a\n<!-- x: begin -->\nold\n<!-- x: end -->\nb\n", "x", "new\n"),
              "a\n<!-- x: begin -->\nnew\n<!-- x: end -->\nb\n");
}

TEST(DocumentSection, NeedsBothMarkersInTheirOrder)
{
    for (const char* document :
         {"", "<!-- x: begin -->\n", "<!-- x: end -->\n", "<!-- x: end -->\n<!-- x: begin -->\n",
          "<!-- y: begin -->\n<!-- y: end -->\n"}) {
        EXPECT_THROW(bancada::WithSection(document, "x", "new\n"), std::invalid_argument)
            << document;
    }
}

TEST(DocumentSection, AFileThatCannotBeRewrittenStaysAsItIs)
{
    const test_support::TempFolder folder;
    const std::string path = folder.File("page.md");
    EXPECT_THROW(bancada::RewriteDocument(path, bancada::WithCommandTable), bancada::Unusable);
    EXPECT_FALSE(folder.Has("page.md"));
    folder.Write("page.md", "no markers\n");
    EXPECT_THROW(bancada::RewriteDocument(path, bancada::WithCommandTable), bancada::Unusable);
    EXPECT_EQ(folder.Read("page.md"), "no markers\n");
}

} // namespace
