// ecf-bancada check: reconciles a logging database by itself.
#include "bancada/Messages.h"
#include "bancada/Printable.h"
#include "bancada/Unusable.h"
#include "bancada/cli/Help.h"
#include "bancada/cli/MemoriaAnchorFile.h"
#include "bancada/cli/Subcommands.h"
#include "bancada/cli/UsedFiles.h"
#include "bancada/conferencia/AncoraDaMemoria.h"
#include "bancada/conferencia/Conferencia.h"
#include "bancada/conferencia/Emenda.h"
#include "bancada/conferencia/FindingGroups.h"
#include "bancada/conferencia/LookedAt.h"
#include "bancada/conferencia/Texts.h"
#include "bancada/log/FirmwareLogReader.h"
#include "bancada/log/Losses.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

namespace bancada
{
namespace
{

using namespace conferencia;

struct CheckOptions {
    std::vector<std::string> databases; // of one register, in their order
    std::string log;
    std::string until;
    std::string memory;
    bool json = false;
    bool all = false;
};

// So many findings of one cause are listed; one systematic fault is told thousands of times.
constexpr std::int64_t LISTED_OF_A_CAUSE = 100;

// A byte that is no UTF-8 becomes U+FFFD, in text as in JSON.
std::string Dump(const nlohmann::ordered_json& json)
{
    return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

std::string Utf8(const std::string& text)
{
    return nlohmann::ordered_json::parse(Dump(text)).get<std::string>();
}

std::string Shown(const std::string& text)
{
    return Printable(Utf8(OneLine(text)));
}

// A database that was begun later than its register has no row of its owner and identity.
std::string Programmed(const std::string& name)
{
    return name.empty() ? Tr("(not programmed)") : Shown(name);
}

// What was looked at, in lines of their own before the findings.
void PrintLookedAt(const LookedAt& lookedAt)
{
    std::cout << Tr("looked at %1, %2 bytes, SHA-256 %3, by ecf-bancada %4",
                    {Shown(lookedAt.file), std::to_string(lookedAt.size), lookedAt.sha256,
                     ECF_VERSION})
              << "\n";
    if (lookedAt.logSize > 0) {
        std::cout << Tr("and its write-ahead log, %1 bytes, SHA-256 %2",
                        {std::to_string(lookedAt.logSize), lookedAt.logSha256})
                  << "\n";
    }
    if (lookedAt.IsEmpty()) {
        std::cout << Tr("an empty database: it holds no document") << "\n";
        return;
    }
    std::cout << Tr("register %1 of %2: %3, GT %4",
                    {Programmed(lookedAt.numSerie), Programmed(lookedAt.contribuinte),
                     Shown(RangeOf(lookedAt)), Money(lookedAt.gt)})
              << "\n";
}

class TextPrinter
{
  public:
    explicit TextPrinter(bool all) : m_all(all) {}

    void Print(const Finding& finding)
    {
        if (m_groups.Add(finding) > LISTED_OF_A_CAUSE && !m_all) {
            return;
        }
        std::cout << (InfoOf(finding.kind).weight == Weight::NOTE ? Tr("note: ") : "")
                  << InfoOf(finding.kind).name << ": "
                  << Printable(Utf8(finding.key + ": " + finding.text))
                  << (finding.explained ? Tr(" [a lost row in the log explains it]") : "") << "\n";
    }

    // Behind the last finding: the causes of which not all are listed.
    void Finish() const
    {
        for (const FindingGroup& group : m_groups.All()) {
            if (group.count > LISTED_OF_A_CAUSE && !m_all) {
                const std::string place = group.column.empty()
                                              ? std::string()
                                              : Tr(" in %1", {group.table + "." + group.column});
                std::cout << Tr("%1: %2 more of the kind%3, from %4 to %5, %6; --all lists them",
                                {InfoOf(group.kind).name,
                                 std::to_string(group.count - LISTED_OF_A_CAUSE), place,
                                 Shown(group.first), Shown(group.last),
                                 Tr(InfoOf(group.kind).meaning)})
                          << "\n";
            }
        }
    }

  private:
    bool m_all;
    FindingGroups m_groups;
};

void PrintSummary(const CheckSummary& summary)
{
    std::cout << TrCount("%1 fiscal receipt", "%1 fiscal receipts", summary.rows.cupons) << ", "
              << TrCount("%1 non-fiscal receipt", "%1 non-fiscal receipts", summary.rows.cuponsNf)
              << ", " << TrCount("%1 Z reduction", "%1 Z reductions", summary.rows.reducoes) << ": "
              << TrCount("%1 finding", "%1 findings", summary.faults);
    if (summary.explained > 0) {
        std::cout << TrCount(" (%1 explained by lost rows in the log)",
                             " (%1 explained by lost rows in the log)", summary.explained);
    }
    std::cout << ", " << TrCount("%1 note", "%1 notes", summary.notes) << "\n";
}

std::string SeverityOf(FindingKind kind, bool explained)
{
    if (InfoOf(kind).weight == Weight::NOTE) {
        return "note";
    }
    return explained ? "loss" : "fault";
}

nlohmann::ordered_json LookedAtJson(const LookedAt& lookedAt)
{
    return {{"file", lookedAt.file},
            {"size", lookedAt.size},
            {"sha256", lookedAt.sha256},
            {"wal_size", lookedAt.logSize},
            {"wal_sha256", lookedAt.logSha256},
            {"empty", lookedAt.IsEmpty()},
            {"serial_number", lookedAt.numSerie},
            {"owner", lookedAt.contribuinte},
            {"first_document", Number(lookedAt.primeiroCoo)},
            {"first_time", lookedAt.primeiraHora},
            {"last_document", Number(lookedAt.ultimoCoo)},
            {"last_time", lookedAt.ultimaHora},
            {"first_z", Number(lookedAt.primeiroCrz)},
            {"last_z", Number(lookedAt.ultimoCrz)},
            {"grand_total", Money(lookedAt.gt)},
            {"tool_version", ECF_VERSION}};
}

nlohmann::ordered_json FindingJson(const Finding& finding, const std::string& file)
{
    return {{"kind", InfoOf(finding.kind).name},
            {"weight", InfoOf(finding.kind).weight == Weight::NOTE ? "note" : "finding"},
            {"key", finding.key},
            {"text", finding.text},
            {"explained", finding.explained},
            {"severity", SeverityOf(finding.kind, finding.explained)},
            {"file", file},
            {"coo", finding.subject.coo},
            {"crz", finding.subject.crz},
            {"table", finding.place.table},
            {"row", finding.place.row},
            {"column", finding.place.column},
            {"expected", finding.place.expected},
            {"found", finding.place.found},
            {"next", NextStepOf(finding.kind)}};
}

// One member of the array a line, so that findings are never held together. Nothing is printed of a
// database that cannot be read.
class JsonPrinter
{
  public:
    explicit JsonPrinter(const LookedAt& lookedAt) : m_lookedAt(lookedAt) {}

    void Print(const Finding& finding)
    {
        const nlohmann::ordered_json json = FindingJson(finding, m_lookedAt.file);
        Begin();
        std::cout << (m_first ? "\n" : ",\n") << Dump(json);
        m_first = false;
        m_groups.Add(finding);
    }

    void Finish(const CheckSummary& summary)
    {
        const nlohmann::ordered_json json = {{"fiscal_receipts", summary.rows.cupons},
                                             {"non_fiscal_receipts", summary.rows.cuponsNf},
                                             {"z_reductions", summary.rows.reducoes},
                                             {"findings", summary.faults},
                                             {"explained", summary.explained},
                                             {"notes", summary.notes}};
        Begin();
        std::cout << "\n],\n\"groups\": " << Dump(GroupsJson()) << ",\n\"summary\": " << Dump(json)
                  << ",\n\"looked_at\": " << Dump(LookedAtJson(m_lookedAt)) << "}\n";
    }

  private:
    nlohmann::ordered_json GroupsJson() const
    {
        nlohmann::ordered_json groups = nlohmann::ordered_json::array();
        for (const FindingGroup& group : m_groups.All()) {
            groups.push_back({{"kind", InfoOf(group.kind).name},
                              {"severity", SeverityOf(group.kind, group.explained)},
                              {"table", group.table},
                              {"column", group.column},
                              {"count", group.count},
                              {"first", group.first},
                              {"last", group.last},
                              {"meaning", InfoOf(group.kind).meaning},
                              {"next", NextStepOf(group.kind)}});
        }
        return groups;
    }

    void Begin()
    {
        if (!m_begun) {
            std::cout << "{\"findings\": [";
            m_begun = true;
        }
    }

    const LookedAt& m_lookedAt;
    FindingGroups m_groups;
    bool m_begun = false;
    bool m_first = true;
};

// Throws Unusable for a file in which no line is a record.
Losses ReadLog(const std::string& path)
{
    FirmwareLogReader reader(path);
    FirmwareLogRecord record;
    const bool any = reader.Next(record);
    if (!any && reader.DamagedLines() > 0) {
        throw Unusable(Tr("%1: not a firmware log: none of its lines is a record", {path}));
    }
    return ReadLosses(path);
}

Anchor ReadAnchor(const std::string& text)
{
    const std::optional<Anchor> anchor = ParseAnchor(text);
    if (!anchor) {
        throw Unusable(
            Tr("--until %1: not COO=NUMBER,CRZ=NUMBER,GT=AMOUNT, each at most once", {text}));
    }
    return *anchor;
}

// What is known from outside.
struct Anchors {
    Anchor until;
    std::optional<MemoriaAnchor> memoria;
};

std::int64_t CheckAnchors(const leitura::DatabaseReading& database, const LookedAt& lookedAt,
                          const Anchors& anchors, const FindingSink& sink)
{
    std::int64_t findings = CheckAnchor(database, lookedAt, anchors.until, sink);
    if (anchors.memoria) {
        findings += CheckMemoriaAnchor(database, lookedAt, *anchors.memoria, sink);
    }
    return findings;
}

// Answers how many findings there are in one database.
std::int64_t CheckOne(const CheckOptions& options, const leitura::DatabaseReading& database,
                      const LookedAt& lookedAt, const Losses* losses, const Anchors& anchors)
{
    CheckSummary summary;
    if (options.json) {
        JsonPrinter printer(lookedAt);
        const FindingSink sink = [&](const Finding& finding) { printer.Print(finding); };
        summary = CheckDatabase(database, losses, sink);
        summary.faults += CheckAnchors(database, lookedAt, anchors, sink);
        printer.Finish(summary);
    } else {
        PrintLookedAt(lookedAt);
        TextPrinter printer(options.all);
        const FindingSink sink = [&](const Finding& finding) { printer.Print(finding); };
        summary = CheckDatabase(database, losses, sink);
        summary.faults += CheckAnchors(database, lookedAt, anchors, sink);
        printer.Finish();
        PrintSummary(summary);
    }
    return summary.faults;
}

// The databases one by one, and the seams between them.
std::int64_t CheckSeveral(const CheckOptions& options,
                          const std::vector<std::unique_ptr<leitura::DatabaseReading>>& databases,
                          const std::vector<LookedAt>& lookedAt, const Anchors& anchors)
{
    std::int64_t findings = 0;
    for (std::size_t i = 0; i < databases.size(); ++i) {
        if (options.json) {
            std::cout << (i == 0 ? "{\"databases\": [\n" : ",\n");
        }
        const bool isLast = i + 1 == databases.size();
        findings +=
            CheckOne(options, *databases[i], lookedAt[i], nullptr, isLast ? anchors : Anchors());
    }
    std::int64_t atSeams = 0;
    nlohmann::ordered_json seams = nlohmann::ordered_json::array();
    TextPrinter printer(options.all);
    for (std::size_t i = 1; i < databases.size(); ++i) {
        atSeams += CheckEmenda(*databases[i - 1], lookedAt[i - 1], *databases[i], lookedAt[i],
                               [&](const Finding& finding) {
                                   if (options.json) {
                                       seams.push_back(FindingJson(finding, lookedAt[i].file));
                                   } else {
                                       printer.Print(finding);
                                   }
                               });
    }
    if (options.json) {
        std::cout << "],\n\"seams\": " << Dump(seams) << "}\n";
    } else {
        std::cout
            << Tr("%1 databases of one register, in their order: %2 where one ends and the next begins",
                  {std::to_string(databases.size()), TrCount("%1 finding", "%1 findings", atSeams)})
            << "\n";
    }
    return findings + atSeams;
}

int Check(const CheckOptions& options)
{
    const bool several = options.databases.size() > 1;
    if (several && !options.log.empty()) {
        throw Unusable(Tr("--log goes with one database: a log does not tell whose rows are lost"));
    }
    std::vector<UsedFile> inputs;
    for (const std::string& database : options.databases) {
        inputs.push_back(EvidenceDatabase(database));
    }
    if (!options.log.empty()) {
        inputs.push_back({options.log, TrLater("firmware log")});
    }
    if (!options.memory.empty()) {
        inputs.push_back({options.memory, TrLater("memory"), {".journal"}});
    }
    RequireApart("", inputs);
    std::optional<Losses> losses;
    if (!options.log.empty()) {
        losses = ReadLog(options.log);
    }
    Anchors anchors;
    if (!options.until.empty()) {
        anchors.until = ReadAnchor(options.until);
    }
    std::vector<std::unique_ptr<leitura::DatabaseReading>> databases;
    for (const std::string& path : options.databases) {
        databases.push_back(std::make_unique<leitura::DatabaseReading>(path));
    }
    std::optional<TextsForPrograms> english;
    if (options.json) {
        english.emplace();
    }
    // All of them are read before anything is printed.
    std::vector<LookedAt> lookedAt;
    lookedAt.reserve(databases.size());
    for (const auto& database : databases) {
        lookedAt.push_back(ReadLookedAt(*database));
    }
    if (!options.memory.empty()) {
        anchors.memoria = ReadMemoriaAnchor(options.memory, *databases.back());
    }
    const std::int64_t findings = several ? CheckSeveral(options, databases, lookedAt, anchors)
                                          : CheckOne(options, *databases.front(), lookedAt.front(),
                                                     losses ? &*losses : nullptr, anchors);
    return findings > 0 ? EXIT_FINDINGS : EXIT_OK;
}

std::string Footer()
{
    std::string text = Tr(
        "A database is judged by its own rows. Without --log, a receipt that is paid in full and "
        "keeps its\nopening values is taken for an additional receipt; with it, only when the log "
        "names its closing. A\nfinding that a lost row in the log explains is marked and still "
        "counts: the row is missing.\n\nKinds of findings:\n");
    for (const FindingKindInfo& kind : FindingKinds()) {
        std::string name = kind.name;
        name.resize(std::max<std::size_t>(name.size(), 25), ' ');
        text += "  " + name + (kind.weight == Weight::NOTE ? Tr("(note) ") : "") +
                Tr(kind.meaning) + "\n";
    }
    return text +
           Tr("\nExit codes: 0 nothing found (notes are no findings); 1 something was found; 2 "
              "the database or the log\ncannot be read.");
}

} // namespace

void AddCheck(CLI::App& app, int& exitCode)
{
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* check = app.add_subcommand(
        "check",
        Tr("Reconcile a logging database: receipts, items and payments, Z reductions, document "
           "numbers, lost rows"));
    check
        ->add_option("DB", options->databases,
                     Tr("The logging database, which is only read; several of one register, in "
                        "their order, are also held against each other"))
        ->required();
    check
        ->add_option(
            "--log", options->log,
            Tr("The firmware log: its rejected statements are listed with the row each should "
               "have written"))
        ->type_name("FILE");
    check
        ->add_option(
            "--until", options->until,
            Tr("What is known from outside, from a paper Z or the register: a last document, "
               "a Z, its grand total. What the rows do not reach is a finding"))
        ->type_name("COO=N,CRZ=N,GT=AMOUNT");
    check
        ->add_option("--memory", options->memory,
                     Tr("The register's memory, which is only read: what its counters, its grand "
                        "total and its owner say and the rows do not reach is a finding"))
        ->type_name("FILE");
    check->add_flag("--all", options->all,
                    Tr("List every finding, also beyond the first %1 of one cause",
                       {std::to_string(LISTED_OF_A_CAUSE)}));
    check->add_flag("--json", options->json, Tr("Print the findings as JSON"));
    check->footer(Footer());
    SetExamples(*check, {{"ecf-bancada check loja.db --log loja.db.log",
                          Tr("Find what does not add up, and what the log says was lost")},
                         {"ecf-bancada check loja.db --until CRZ=1,GT=1234.56",
                          Tr("Compare with a paper Z: is the end missing?")},
                         {"ecf-bancada check loja.db --json", Tr("The same for another program")}});
    check->callback([options, &exitCode] { exitCode = Check(*options); });
}

} // namespace bancada
