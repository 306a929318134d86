// ecf-bancada man-page, and how its page is made.
#include "bancada/cli/ManPage.h"

#include "bancada/Messages.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/Subcommands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <iostream>
#include <sstream>
#include <string_view>
#include <vector>

namespace bancada
{
namespace
{

// A text as it stands: none of its characters is markup, none becomes another one of the typeface.
std::string Plain(std::string_view text)
{
    std::string plain;
    for (const char c : text) {
        switch (c) {
        case '\\':
            plain += "\\e";
            break;
        case '-':
            plain += "\\-";
            break;
        case '\'':
            plain += "\\(aq";
            break;
        case '`':
            plain += "\\(ga";
            break;
        case '^':
            plain += "\\(ha";
            break;
        case '~':
            plain += "\\(ti";
            break;
        case '\n':
            plain += ' ';
            break;
        default:
            plain += c;
        }
    }
    // A period begins a request where it begins a line.
    return !plain.empty() && plain[0] == '.' ? "\\&" + plain : plain;
}

std::string Bold(std::string_view text)
{
    return "\\fB" + Plain(text) + "\\fR";
}

std::string Upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

// Text whose paragraphs are parted by blank lines.
void Paragraphs(std::ostream& page, const std::string& text)
{
    std::istringstream lines(text);
    bool begun = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty()) {
            begun = false;
        } else if (line[0] == ' ') {
            const std::size_t name = std::min(line.find_first_not_of(' '), line.size());
            const std::size_t end = std::min(line.find(' ', name), line.size());
            const std::size_t rest = std::min(line.find_first_not_of(' ', end), line.size());
            page << (rest < line.size() ? ".TP\n" : ".PP\n") << Bold(line.substr(name, end - name))
                 << "\n";
            if (rest < line.size()) {
                page << Plain(line.substr(rest)) << "\n";
            }
            begun = false;
        } else {
            page << (begun ? "" : ".PP\n") << Plain(line) << "\n";
            begun = true;
        }
    }
}

// The formatter of --help, so that both say the same.
const CLI::Formatter& FormatterOf(const CLI::App& app)
{
    return dynamic_cast<const CLI::Formatter&>(*app.get_formatter());
}

// The usage that --help shows, its label left out.
std::string Usage(const CLI::App& app, const std::string& name)
{
    const CLI::Formatter& formatter = FormatterOf(app);
    const std::string label = formatter.get_label("Usage") + ": ";
    const std::string usage = formatter.make_usage(&app, name);
    return usage.substr(label.size(), usage.find('\n') - label.size());
}

std::vector<const CLI::App*> Subcommands(const CLI::App& app)
{
    return app.get_subcommands([](const CLI::App* sub) { return !sub->get_group().empty(); });
}

void Options(std::ostream& page, const CLI::App& app, bool positional)
{
    const CLI::Formatter& formatter = FormatterOf(app);
    for (const CLI::Option* option : app.get_options([positional](const CLI::Option* o) {
             return !o->get_group().empty() && o->get_positional() == positional;
         })) {
        page << ".TP\n"
             << Bold(formatter.make_option_name(option, positional))
             << Plain(formatter.make_option_opts(option)) << "\n"
             << Plain(option->get_description()) << "\n";
    }
}

void Examples(std::ostream& page, const CLI::App& app)
{
    const std::vector<Example> examples = ExamplesOf(app);
    if (!examples.empty()) {
        page << ".PP\n" << Plain(Tr("Examples:")) << "\n";
    }
    for (const Example& example : examples) {
        page << ".TP\n" << Bold(example.line) << "\n" << Plain(example.does) << "\n";
    }
}

void Subcommand(std::ostream& page, const CLI::App& app, const CLI::App& sub)
{
    page << ".SS " << Plain(sub.get_name()) << "\n"
         << Plain(sub.get_description()) << "\n.PP\n"
         << Plain(Usage(sub, app.get_name() + " " + sub.get_name())) << "\n";
    Examples(page, sub);
    Options(page, sub, true);
    Options(page, sub, false);
    Paragraphs(page, sub.get_footer());
}

} // namespace

std::string ManPage(const CLI::App& app)
{
    std::ostringstream page;
    const std::string& name = app.get_name();
    page << ".TH " << Plain(Upper(name)) << " 1 \"\" \"" << Plain(app.version()) << "\" \""
         << Plain(Tr("User Commands")) << "\"\n"
         << ".SH " << Tr("NAME") << "\n"
         << Plain(name) << " \\- " << Plain(app.get_description()) << "\n"
         << ".SH " << Tr("SYNOPSIS") << "\n"
         << Plain(Usage(app, name)) << "\n";
    for (const CLI::App* sub : Subcommands(app)) {
        page << ".br\n" << Plain(Usage(*sub, name + " " + sub->get_name())) << "\n";
    }
    page << ".SH " << Tr("OPTIONS") << "\n";
    Options(page, app, true);
    Options(page, app, false);
    page << ".SH " << Tr("SUBCOMMANDS") << "\n";
    for (const CLI::App* sub : Subcommands(app)) {
        Subcommand(page, app, *sub);
    }
    page << ".SH " << Tr("NOTES") << "\n";
    Paragraphs(page, app.get_footer());
    page << ".SH " << Tr("FILES") << "\n.TP\n"
         << Bold("docs/") << "\n"
         << Plain(Tr("Lies in share/doc/%1 below the folder that the program was installed into, "
                     "/usr for the Debian package",
                     {name}))
         << "\n";
    return page.str();
}

void AddManPage(CLI::App& app, int& exitCode)
{
    CLI::App* page = app.add_subcommand(
        "man-page", Tr("Print the manual page that is installed with the program"));
    page->footer(Tr("Exit codes: 0 done; 2 standard "
                    "output could not be written."));
    SetExamples(*page, {{"ecf-bancada man-page | man -l -", Tr("Read the manual page")}});
    page->callback([&app, &exitCode] {
        std::cout << ManPage(app);
        exitCode = EXIT_OK;
    });
}

} // namespace bancada
