#include "bancada/cli/Help.h"

#include "bancada/Messages.h"

#include <CLI/CLI.hpp>
#include <cstring>
#include <memory>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

namespace bancada
{
namespace
{

class HelpFormatter : public CLI::Formatter
{
  public:
    HelpFormatter() = default;
    HelpFormatter(const CLI::Formatter& labels, std::vector<Example> examples)
        : CLI::Formatter(labels), m_examples(std::move(examples))
    {
    }

    const std::vector<Example>& Examples() const { return m_examples; }

    // Behind the usage, before what is taken.
    std::string make_usage(const CLI::App* app, std::string name) const override
    {
        std::string usage = CLI::Formatter::make_usage(app, std::move(name));
        if (m_examples.empty()) {
            return usage;
        }
        usage += std::string("\n") + Tr("Examples:") + "\n";
        for (const Example& example : m_examples) {
            usage += "  " + example.line + "\n      " + example.does + "\n";
        }
        return usage;
    }

  private:
    std::vector<Example> m_examples;
};

// What CLI11 says, as patterns: %1, %2 ... stand for what it puts there.
constexpr const char* MISSING = TrLater("%1: %2 required %3 missing");
constexpr const char* MESSAGES[] = {
    TrLater("The following argument was not expected: %1"),
    TrLater("The following arguments were not expected: %1"),
    TrLater("%1: Value %2 not in range %3 to %4"),
    MISSING,
    TrLater("%1: %2 not in {%3}"),
    TrLater("Could not convert: %1 = %2"),
    TrLater("Run with %1 or %2 for more information."),
    TrLater("Run with %1 for more information."),
    TrLater("A subcommand is required"),
    TrLater("%1 is required"),
    TrLater("%1 excludes %2"),
    TrLater("%1 requires %2"),
};

// What stands at the places of %1, %2 ... of `pattern` in `text`; nothing if it does not fit.
std::optional<std::vector<std::string>> Match(std::string_view pattern, std::string_view text)
{
    std::vector<std::string> values;
    std::size_t place = pattern.find('%');
    const std::string_view head = pattern.substr(0, place);
    if (text.substr(0, head.size()) != head) {
        return std::nullopt;
    }
    text.remove_prefix(head.size());
    while (place != std::string_view::npos) {
        const std::size_t next = pattern.find('%', place + 1);
        const std::string_view behind = pattern.substr(place + 2, next - place - 2);
        const std::size_t end = behind.empty() ? text.size() : text.find(behind);
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        values.emplace_back(text.substr(0, end));
        text.remove_prefix(end + behind.size());
        place = next;
    }
    return text.empty() ? std::optional(values) : std::nullopt;
}

std::string Translated(const std::string& line)
{
    for (const char* message : MESSAGES) {
        auto values = Match(message, line);
        if (!values) {
            continue;
        }
        if (message == MISSING) {
            values->back() = Tr(values->back().c_str()); // the name of a type
        }
        std::string text = Tr(message);
        for (std::size_t i = values->size(); i > 0; --i) {
            const std::string mark = "%" + std::to_string(i);
            text.replace(text.find(mark), mark.size(), (*values)[i - 1]);
        }
        return text;
    }
    return line;
}

std::string FailureMessage(const CLI::App* app, const CLI::Error& error)
{
    std::istringstream lines(CLI::FailureMessage::simple(app, error));
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        text += Translated(line) + "\n";
    }
    return text;
}

void Finish(CLI::App& app)
{
    const std::string description =
        Tr("The language of texts: en, English, or pt, Portuguese [as the environment asks]");
    app.add_option("--language", description)
        ->check(CLI::IsMember({"en", "pt"}).description(""))
        ->type_name("en|pt");
    for (CLI::Option* option : app.get_options([](const CLI::Option*) { return true; })) {
        if (option->get_group() == "Options") {
            option->group(Tr("Options"));
        }
    }
}

} // namespace

void SetExamples(CLI::App& app, std::vector<Example> examples)
{
    const auto* formatter = dynamic_cast<const CLI::Formatter*>(app.get_formatter().get());
    app.formatter(std::make_shared<HelpFormatter>(
        formatter == nullptr ? CLI::Formatter() : *formatter, std::move(examples)));
}

std::vector<Example> ExamplesOf(const CLI::App& app)
{
    const auto* formatter = dynamic_cast<const HelpFormatter*>(app.get_formatter().get());
    return formatter == nullptr ? std::vector<Example>() : formatter->Examples();
}

void SetHelpLanguage(CLI::App& app)
{
    for (const char* label :
         {TrLater("Usage"), TrLater("OPTIONS"), TrLater("SUBCOMMAND"), TrLater("REQUIRED"),
          TrLater("Positionals"), TrLater("Excludes"), TrLater("FILE"), TrLater("DATE"),
          TrLater("RANGE"), TrLater("TEXT"), TrLater("INT"), TrLater("UINT"),
          TrLater("COO=N,CRZ=N,GT=AMOUNT"), TrLater("FOLDER")}) {
        app.get_formatter()->label(label, Tr(label));
    }
    app.set_help_flag("-h,--help", Tr("Print this help message and exit"));
    app.failure_message(FailureMessage);
}

void FinishHelp(CLI::App& app)
{
    Finish(app);
    for (CLI::App* sub : app.get_subcommands([](const CLI::App*) { return true; })) {
        Finish(*sub);
        if (sub->get_group() == "Subcommands") {
            sub->group(Tr("Subcommands"));
        }
    }
}

void ChooseLanguage(int argc, const char* const* argv)
{
    Language language = LanguageOfEnvironment();
    constexpr std::string_view OPTION = "--language";
    for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
        const std::string_view argument(argv[i]);
        if (argument == OPTION && i + 1 < argc) {
            static_cast<void>(ParseLanguage(argv[i + 1], language));
        } else if (argument.substr(0, OPTION.size() + 1) == "--language=") {
            static_cast<void>(ParseLanguage(argument.substr(OPTION.size() + 1), language));
        }
    }
    SetLanguage(language);
}

} // namespace bancada
