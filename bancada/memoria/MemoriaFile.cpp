#include "bancada/memoria/MemoriaFile.h"

#include "bancada/Messages.h"
#include "bancada/Sha256.h"
#include "bancada/Unusable.h"
#include "bancada/memoria/FileStorage.h"
#include "bancada/memoria/JsonReader.h"
#include "bancada/memoria/JsonText.h"
#include "bancada/memoria/MemoriaJson.h"
#include "bancada/memoria/ProgressJson.h"
#include "bancada/memoria/WholeFile.h"

#include <cassert>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

namespace bancada
{
namespace
{

constexpr char FORMAT[] = "ecf-bancada memoria";
// 1 had no clock: a register that goes on from there takes any for its first command. It had no
// journal either, and the state before a pending command in the file itself.
constexpr std::uint64_t FIRST_VERSION = 1;
constexpr std::uint64_t VERSION = 2;

// Twice the largest state, an open receipt of 999 items with the longest texts, and as much again.
constexpr std::size_t MAX_BYTES = 32 * 1024 * 1024;

// The digest is that of the file's other fields in the form that the program writes, so that blanks
// and line breaks may be put between them.
std::string Digest(nlohmann::json root)
{
    root.erase("digest");
    return Sha256Hex(root.dump());
}

const nlohmann::json& FieldOf(const nlohmann::json& record, const char* name)
{
    const auto field = record.find(name);
    if (field == record.end() || !field->is_object()) {
        throw InvalidField(name, Tr("an object is due"));
    }
    return *field;
}

// Whether a record of the journal says that its command waits for the database.
bool IsPending(const nlohmann::json& record)
{
    const auto field = record.find("pendente");
    if (field == record.end()) {
        return false;
    }
    if (!field->is_boolean()) {
        throw InvalidField("pendente", Tr("true or false is due"));
    }
    return field->get<bool>();
}

// How many states the memory has held behind a record of the journal; 0 where it does not say.
std::int64_t StepsOf(const nlohmann::json& record)
{
    const nlohmann::json& execucao = FieldOf(record, "execucao");
    const auto field = execucao.find("passos");
    if (field == execucao.end()) {
        return 0;
    }
    if (!field->is_number_integer()) {
        throw InvalidField("execucao.passos", Tr("an integer is due"));
    }
    return field->get<std::int64_t>();
}

} // namespace

// The file itself, where a link names it: a link is not to be replaced.
MemoriaFile::MemoriaFile(const std::string& path, std::unique_ptr<Storage> storage,
                         std::size_t maxJournalBytes)
    : m_path(FollowLinks(path)),
      m_storage(storage != nullptr ? std::move(storage) : std::make_unique<FileStorage>()),
      m_journal(m_path + ".journal", *m_storage), m_maxJournalBytes(maxJournalBytes)
{
    const std::optional<std::string> content = m_storage->Read(m_path, MAX_BYTES);
    try {
        if (content) {
            Parse(*content);
        }
    } catch (const std::runtime_error& error) {
        throw Unusable(Tr("cannot use the memory %1: %2", {path, error.what()}));
    }
    try {
        ApplyJournal();
    } catch (const std::runtime_error& error) {
        throw Unusable(Tr("cannot use the memory %1 with its journal %2: %3",
                          {path, m_journal.Path(), error.what()}));
    }
}

void MemoriaFile::Parse(const std::string& content)
{
    const nlohmann::json root = ParseJson(content);
    if (!root.is_object() || root.find("formato") == root.end() || root["formato"] != FORMAT) {
        throw std::runtime_error(
            Tr("it is no memory of this program: \"formato\" is not \"%1\"", {FORMAT}));
    }
    const auto version = root.find("versao");
    if (version == root.end()) {
        throw InvalidField("versao", Tr("it is missing"));
    }
    if (version->is_number_unsigned() && version->get<std::uint64_t>() > VERSION) {
        throw InvalidField(
            "versao",
            Tr("%1 was written by a newer program; this one reads versions %2 to %3",
               {version->dump(), std::to_string(FIRST_VERSION), std::to_string(VERSION)}));
    }
    if (!version->is_number_unsigned() || version->get<std::uint64_t>() < FIRST_VERSION) {
        throw InvalidField("versao", Tr("it is not a number from %1 to %2",
                                        {std::to_string(FIRST_VERSION), std::to_string(VERSION)}));
    }
    const auto digest = root.find("digest");
    if (digest != root.end() && *digest != Digest(root)) {
        throw InvalidField("digest",
                           Tr("the file is damaged: the digest is not that of its content "
                              "(whoever edits it takes the field out)"));
    }

    for (const auto& field : root.items()) {
        static const std::set<std::string> known = {"formato",  "versao",   "digest",
                                                    "registro", "execucao", "antes"};
        if (known.count(field.key()) == 0) {
            throw InvalidField(field.key(), Tr("there is no such field"));
        }
    }
    if (digest != root.end()) {
        m_digest = digest->get<std::string>();
    }
    const auto readSnapshot = [](const nlohmann::json& json, const std::string& place) {
        Snapshot snapshot;
        if (json.find("registro") != json.end()) {
            snapshot.registro = MemoriaFromJson(json["registro"], place + "registro");
        }
        if (json.find("execucao") != json.end()) {
            snapshot.progress = ProgressFromJson(json["execucao"], place + "execucao");
        }
        return snapshot;
    };
    m_hasProgress = root.find("execucao") != root.end();
    Snapshot now = readSnapshot(root, "");
    m_state = std::move(now.registro);
    m_written = m_progress = now.progress;
    const auto before = root.find("antes");
    m_pending = before != root.end();
    if (!m_pending) {
        return;
    }
    if (!before->is_object()) {
        throw InvalidField("antes", Tr("an object is due"));
    }
    for (const auto& field : before->items()) {
        if (field.key() != "registro" && field.key() != "execucao") {
            throw InvalidField("antes." + field.key(), Tr("there is no such field"));
        }
    }
    m_before = readSnapshot(*before, "antes.");
    m_progress = m_before->progress;
    if (!m_hasProgress || m_written.sequence <= m_progress.sequence) {
        throw InvalidField("execucao.sequencia", Tr("it is not after that of \"antes\""));
    }
}

void MemoriaFile::ApplyJournal()
{
    const MemoriaJournal::Content journal = m_journal.Read(m_digest);
    if (journal.records.empty()) {
        return;
    }
    if (journal.memory != m_digest) {
        // A crash has left it behind when all of it had come into the file, a pending command
        // aside that the database did not have.
        const nlohmann::json& last = journal.records.back();
        if (StepsOf(last) - (IsPending(last) ? 1 : 0) <= m_written.steps) {
            return;
        }
        throw std::runtime_error(Tr("the journal holds commands of another state of the memory; "
                                    "remove the journal if the memory is the right one"));
    }
    for (const nlohmann::json& record : journal.records) {
        const std::int64_t step = m_written.steps + 1;
        m_pending = IsPending(record);
        if (m_pending) {
            m_before = {m_state, m_written};
        }
        ChangeProgress(m_written, FieldOf(record, "execucao"), "execucao");
        ChangeMemoria(m_state, FieldOf(record, "registro"), "registro");
        if (m_written.steps != step) {
            throw std::runtime_error(Tr("its record %1 is missing", {std::to_string(step)}));
        }
        if (!m_pending) {
            m_before.reset();
        }
    }
    m_hasProgress = true;
    m_progress = m_pending ? m_before->progress : m_written;
}

void MemoriaFile::CheckNumber(std::int32_t number, const std::string& database) const
{
    if (number < 0 || number > MAX_SEQUENCE) {
        throw Unusable(Tr("the database %1 carries the number %2, which is not that of a command",
                          {database, std::to_string(number)}));
    }
    if (!m_hasProgress) {
        return;
    }
    // A command that was lost may have reached the file all the same, if its disk said that it
    // failed and did not.
    const std::int32_t first = m_progress.confirmed;
    const std::int32_t last = (m_pending ? m_written : m_progress).sequence;
    if (number >= first && number <= last) {
        return;
    }
    const std::string due =
        first == last ? Tr("command %1", {std::to_string(last)})
                      : Tr("command %1 to %2", {std::to_string(first), std::to_string(last)});
    throw Unusable(Tr(
        "the memory %1 and the database %2 do not belong together: the memory needs a database at %3, this one is at %4",
        {m_path, database, due, std::to_string(number)}));
}

void MemoriaFile::Settle(std::int32_t number)
{
    if (!m_hasProgress) {
        // From here on it belongs to this database.
        m_progress.sequence = number;
        m_hasProgress = true;
    } else if (m_pending && number == m_written.sequence) {
        m_progress = m_written;
    } else if (m_pending) {
        m_state = m_before->registro;
    }
    m_before.reset();
    m_pending = false;
    m_progress.confirmed = number;
    WriteFile();
}

void MemoriaFile::WriteFile()
{
    nlohmann::json root = {{"formato", FORMAT},
                           {"versao", VERSION},
                           {"registro", MemoriaToJson(m_state)},
                           {"execucao", ProgressToJson(m_progress)}};
    m_digest = Digest(root);
    root["digest"] = m_digest;
    m_storage->Replace(m_path, root.dump() + "\n");
    m_written = m_progress;
    m_journal.Remove();
}

void MemoriaFile::WriteRecord(const Memoria& registro, CommandProgress progress, bool pending)
{
    progress.steps = m_written.steps + 1;
    std::string record = "{\"execucao\":" + TakeProgressChanges(m_written, progress);
    if (pending) {
        record += ",\"pendente\":true";
    }
    record += ",\"registro\":" + TakeMemoriaChanges(m_state, registro) + "}";
    m_journal.Append(record, m_digest, m_path);
}

void MemoriaFile::WritePending(const Memoria& registro, const CommandProgress& progress)
{
    assert(!m_pending && progress.sequence > m_written.sequence);
    if (progress.sequence > MAX_SEQUENCE) {
        throw Unusable(Tr("the memory %1 has no number for another command", {m_path}));
    }
    m_pending = true;
    WriteRecord(registro, progress, true);
}

void MemoriaFile::Confirm()
{
    assert(m_pending);
    m_pending = false;
    m_progress = m_written;
    m_progress.confirmed = m_progress.sequence;
    if (m_journal.Bytes() > m_maxJournalBytes) {
        Fold();
    }
}

void MemoriaFile::WriteSettled(const Memoria& registro, const CommandProgress& progress)
{
    WriteRecord(registro, progress, false);
    m_pending = false;
    m_progress = m_written;
    if (m_journal.Bytes() > m_maxJournalBytes) {
        Fold();
    }
}

void MemoriaFile::Fold()
{
    assert(!m_pending);
    if (!m_journal.IsEmpty()) {
        WriteFile();
    }
}

} // namespace bancada
