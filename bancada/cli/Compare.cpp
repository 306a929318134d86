// ecf-bancada compare: what two legal audit files differ in.
#include "bancada/Messages.h"
#include "bancada/arquivo/Comparacao.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/UsedFiles.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

namespace bancada
{
namespace
{

using namespace arquivo;

struct CompareOptions {
    std::string first;
    std::string second;
    bool json = false;
};

std::string Lines(const Difference& difference)
{
    std::string text;
    if (difference.firstLine != 0) {
        text = Tr("line %1 of the first", {std::to_string(difference.firstLine)});
    }
    if (difference.secondLine != 0) {
        text += (text.empty() ? "" : ", ") +
                Tr("line %1 of the second", {std::to_string(difference.secondLine)});
    }
    return text;
}

void PrintText(const Difference& difference)
{
    std::cout << difference.type << (difference.key.empty() ? "" : " ") << difference.key << ": ";
    switch (difference.kind) {
    case DifferenceKind::FIELD:
        std::cout << Tr("%1 (positions %2-%3) \"%4\" and \"%5\":",
                        {difference.field, std::to_string(difference.firstPosition),
                         std::to_string(difference.lastPosition), difference.first,
                         difference.second});
        break;
    case DifferenceKind::ONLY_FIRST:
        std::cout << Tr("only in the first file:");
        break;
    case DifferenceKind::ONLY_SECOND:
        std::cout << Tr("only in the second file:");
        break;
    case DifferenceKind::ORDER:
        std::cout << Tr("at another place:");
        break;
    }
    std::cout << " " << Lines(difference) << "\n";
}

void PrintSummary(const ComparisonSummary& summary)
{
    for (const TypeCount& count : summary.types) {
        std::cout
            << Tr("%1: %2 and %3 records, %4 equal, %5 different, %6 only in the first, %7 only in the second, %8 at another place",
                  {count.type, std::to_string(count.first), std::to_string(count.second),
                   std::to_string(count.equal), std::to_string(count.different),
                   std::to_string(count.onlyFirst), std::to_string(count.onlySecond),
                   std::to_string(count.order)})
            << "\n";
    }
    std::cout << (summary.Differs() ? Tr("The files differ.") : Tr("The files are the same."))
              << "\n";
}

nlohmann::ordered_json ToJson(const Difference& difference)
{
    nlohmann::ordered_json json = {
        {"kind", NameOf(difference.kind)}, {"type", difference.type}, {"key", difference.key}};
    if (difference.kind == DifferenceKind::FIELD) {
        json["field"] = difference.field;
        json["positions"] = {difference.firstPosition, difference.lastPosition};
        json["first"] = difference.first;
        json["second"] = difference.second;
    }
    json["first_line"] = difference.firstLine == 0 ? nlohmann::ordered_json()
                                                   : nlohmann::ordered_json(difference.firstLine);
    json["second_line"] = difference.secondLine == 0
                              ? nlohmann::ordered_json()
                              : nlohmann::ordered_json(difference.secondLine);
    return json;
}

// One difference a line, so that they are never held together.
ComparisonSummary CompareAsJson(const CompareOptions& options)
{
    bool begun = false;
    ComparisonSummary summary =
        Compare(options.first, options.second, [&](const Difference& difference) {
            std::cout << (begun ? ",\n" : "{\"differences\": [\n") << ToJson(difference).dump();
            begun = true;
        });
    nlohmann::ordered_json types = nlohmann::ordered_json::array();
    for (const TypeCount& count : summary.types) {
        types.push_back({{"type", count.type},
                         {"first", count.first},
                         {"second", count.second},
                         {"equal", count.equal},
                         {"different", count.different},
                         {"only_first", count.onlyFirst},
                         {"only_second", count.onlySecond},
                         {"order", count.order}});
    }
    std::cout << (begun ? "" : "{\"differences\": [") << "\n],\n\"types\": " << types.dump()
              << ",\n\"differs\": " << (summary.Differs() ? "true" : "false") << "}\n";
    return summary;
}

} // namespace

void AddCompare(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<CompareOptions>();
    CLI::App* compare = app.add_subcommand(
        "compare", Tr("Compare two legal audit files, record by record and field by field"));
    compare->add_option("FIRST", options->first, Tr("A legal audit file"))->required();
    compare->add_option("SECOND", options->second, Tr("The one to compare it with"))->required();
    compare->add_flag("--json", options->json, Tr("Print the differences as JSON"));
    compare->footer(Tr(
        "Records are paired by what tells them apart in their type: user, counter, item and so on. "
        "The totalizers\nof a Z reduction are a set, of all others the place counts. What ends a "
        "line (CR LF or LF) does not.\n\nExit codes: 0 the same; 1 they differ; 2 a file cannot be "
        "read or is no legal audit file."));
    SetExamples(*compare, {{"ecf-bancada compare loja.txt outra.txt",
                            Tr("List the records and fields in which two files differ")}});
    compare->callback([options, &exitCode] {
        // Standard output may be redirected.
        RequireApart("", {{options->first, TrLater("first file")},
                          {options->second, TrLater("second file")}});
        ComparisonSummary summary;
        if (options->json) {
            summary = CompareAsJson(*options);
        } else {
            summary = Compare(options->first, options->second, PrintText);
            PrintSummary(summary);
        }
        exitCode = summary.Differs() ? EXIT_FINDINGS : EXIT_OK;
    });
}

} // namespace bancada
