// The documents that the program writes itself: docs/commands.md's table, the manual page.
#include "bancada/Unusable.h"
#include "bancada/cli/CommandTable.h"
#include "bancada/cli/DocumentSection.h"
#include "bancada/cli/ManPage.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace
{

using ::testing::HasSubstr;
using ::testing::StartsWith;

std::string Read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST(CommandTable, ThePageHoldsTheCataloguesOwn)
{
    const std::string page = Read(ECF_SOURCE_DIR "/docs/commands.md");
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
    const std::string path =
        (std::filesystem::temp_directory_path() / ("section-" + std::to_string(getpid()))).string();
    EXPECT_THROW(bancada::RewriteDocument(path, bancada::WithCommandTable), bancada::Unusable);
    EXPECT_FALSE(std::filesystem::exists(path));
    std::ofstream(path) << "no markers\n";
    EXPECT_THROW(bancada::RewriteDocument(path, bancada::WithCommandTable), bancada::Unusable);
    EXPECT_EQ(Read(path), "no markers\n");
    std::filesystem::remove(path);
}

TEST(ManPage, TellsEverySubcommandAndOption)
{
    CLI::App app("A tool.", "some-tool");
    app.set_version_flag("--version", "some-tool 1.2");
    app.require_subcommand(1);
    app.footer("Ends well.");
    std::string text;
    bool flag = false;
    CLI::App* sub = app.add_subcommand("do", "Do it");
    sub->add_option("FILE", text, "What to do it to")->required();
    sub->add_option("--how", text, "A way's name")->type_name("NAME");
    sub->add_flag("-q,--quiet", flag, ".quietly");
    sub->footer("One paragraph\nof two lines.\n\nKinds:\n  one   the first\n  second\n\nThe ^`~\\ "
                "end.");
    app.add_subcommand("hidden", "Not told")->group("");

    EXPECT_EQ(bancada::ManPage(app), R"(.TH SOME\-TOOL 1 "" "some\-tool 1.2" "User Commands"
.SH NAME
some\-tool \- A tool.
.SH SYNOPSIS
some\-tool [OPTIONS] SUBCOMMAND
.br
some\-tool do [OPTIONS] FILE
.SH OPTIONS
.TP
\fB\-h,\-\-help\fR
Print this help message and exit
.TP
\fB\-\-version\fR
Display program version information and exit
.SH SUBCOMMANDS
.SS do
Do it
.PP
some\-tool do [OPTIONS] FILE
.TP
\fBFILE\fR TEXT REQUIRED
What to do it to
.TP
\fB\-h,\-\-help\fR
Print this help message and exit
.TP
\fB\-\-how\fR NAME
A way\(aqs name
.TP
\fB\-q,\-\-quiet\fR
\&.quietly
.PP
One paragraph
of two lines.
.PP
Kinds:
.TP
\fBone\fR
the first
.PP
\fBsecond\fR
.PP
The \(ha\(ga\(ti\e end.
.SH NOTES
.PP
Ends well.
)");
}

} // namespace
