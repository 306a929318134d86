// The manual page.
#include "bancada/cli/ManPage.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>
#include <string>

namespace
{

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
.SH FILES
.TP
\fBdocs/\fR
Lies in share/doc/some\-tool below the folder that the program was installed into, /usr for the Debian package
)");
}

} // namespace
