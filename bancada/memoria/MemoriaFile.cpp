#include "bancada/memoria/MemoriaFile.h"

#include "bancada/Sha256.h"
#include "bancada/Unusable.h"
#include "bancada/memoria/JsonReader.h"
#include "bancada/memoria/JsonText.h"
#include "bancada/memoria/JsonWriter.h"
#include "bancada/memoria/MemoriaJson.h"
#include "bancada/memoria/WholeFile.h"

#include <cassert>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace bancada
{
namespace
{

constexpr char FORMAT[] = "ecf-bancada memoria";
// 1 had no clock: a register that goes on from there takes any for its first command.
constexpr std::uint64_t FIRST_VERSION = 1;
constexpr std::uint64_t VERSION = 2;

// Twice the largest state, an open receipt of 999 items with the longest texts, and as much again.
constexpr std::size_t MAX_BYTES = 32 * 1024 * 1024;

constexpr std::int32_t MAX_SEQUENCE = std::numeric_limits<std::int32_t>::max() - 1;
constexpr int MAX_LINES = std::numeric_limits<int>::max() - 1;
constexpr std::int64_t MAX_INT64 = std::numeric_limits<std::int64_t>::max();

// V and E as in MemoriaFields.h.
template <class V, class E>
void VisitProgress(V& v, E& progress)
{
    v.Integer("sequencia", progress.sequence, 0, MAX_SEQUENCE);
    v.Integer("confirmada", progress.confirmed, 0, MAX_SEQUENCE);
    v.Instant("relogio", progress.clock);
    v.Group("fita", [&](auto& tape) {
        tape.Integer("linhas", progress.tape.line, 0, MAX_LINES);
        tape.Integer("bytes", progress.tape.bytes, 0, MAX_INT64);
        tape.Text("digest", progress.tape.digest);
    });
    v.Integer("perdidos", progress.lost, 0, MAX_INT64);
    v.Text("ultima_perda", progress.lastLoss);
}

CommandProgress ProgressFromJson(const nlohmann::json& json, const std::string& place)
{
    CommandProgress progress;
    JsonReader reader(json, place);
    VisitProgress(reader, progress);
    reader.Finish();
    if (progress.confirmed > progress.sequence) {
        throw InvalidField(place + ".confirmada", "it is more than sequencia");
    }
    return progress;
}

std::string ProgressText(const CommandProgress& progress)
{
    JsonWriter fields;
    VisitProgress(fields, progress);
    return "\"execucao\":" + fields.Finish().dump();
}

// The digest is that of the file's other fields in the form that the program writes, so that blanks
// and line breaks may be put between them.
std::string Digest(nlohmann::json root)
{
    root.erase("digest");
    return Sha256Hex(root.dump());
}

} // namespace

// The file itself, where a link names it: a link is not to be replaced.
MemoriaFile::MemoriaFile(const std::string& path) : m_path(FollowLinks(path))
{
    const std::optional<std::string> content = ReadWholeFile(m_path, MAX_BYTES);
    if (!content) {
        return;
    }
    try {
        Parse(*content);
    } catch (const std::runtime_error& error) {
        throw Unusable("cannot use the memory " + path + ": " + error.what());
    }
}

void MemoriaFile::Parse(const std::string& content)
{
    const nlohmann::json root = ParseJson(content);
    if (!root.is_object() || root.find("formato") == root.end() || root["formato"] != FORMAT) {
        throw std::runtime_error(std::string("it is no memory of this program: \"formato\" is not "
                                             "\"") +
                                 FORMAT + "\"");
    }
    const auto version = root.find("versao");
    if (version == root.end()) {
        throw InvalidField("versao", "it is missing");
    }
    if (version->is_number_unsigned() && version->get<std::uint64_t>() > VERSION) {
        throw InvalidField("versao", version->dump() +
                                         " was written by a newer program; this one "
                                         "reads versions " +
                                         std::to_string(FIRST_VERSION) + " to " +
                                         std::to_string(VERSION));
    }
    if (!version->is_number_unsigned() || version->get<std::uint64_t>() < FIRST_VERSION) {
        throw InvalidField("versao", "it is not a number from " + std::to_string(FIRST_VERSION) +
                                         " to " + std::to_string(VERSION));
    }
    const auto digest = root.find("digest");
    if (digest != root.end() && *digest != Digest(root)) {
        throw InvalidField("digest", "the file is damaged: the digest is not that of its content "
                                     "(whoever edits it takes the field out)");
    }

    for (const auto& field : root.items()) {
        static const std::set<std::string> known = {"formato",  "versao",   "digest",
                                                    "registro", "execucao", "antes"};
        if (known.count(field.key()) == 0) {
            throw InvalidField(field.key(), "there is no such field");
        }
    }
    const auto readSnapshot = [](const nlohmann::json& json, const std::string& place,
                                 Snapshot& snapshot) {
        if (json.find("registro") != json.end()) {
            snapshot.registro = MemoriaFromJson(json["registro"], place + "registro");
        }
        if (json.find("execucao") != json.end()) {
            snapshot.progress = ProgressFromJson(json["execucao"], place + "execucao");
        }
    };
    m_hasProgress = root.find("execucao") != root.end();
    const auto before = root.find("antes");
    m_pending = before != root.end();
    readSnapshot(root, "", m_pending ? m_after : m_current);
    if (!m_pending) {
        return;
    }
    if (!before->is_object()) {
        throw InvalidField("antes", "an object is due");
    }
    for (const auto& field : before->items()) {
        if (field.key() != "registro" && field.key() != "execucao") {
            throw InvalidField("antes." + field.key(), "there is no such field");
        }
    }
    readSnapshot(*before, "antes.", m_current);
    if (!m_hasProgress || m_after.progress.sequence <= m_current.progress.sequence) {
        throw InvalidField("execucao.sequencia", "it is not after that of \"antes\"");
    }
}

void MemoriaFile::CheckNumber(std::int32_t number, const std::string& database) const
{
    if (number < 0 || number > MAX_SEQUENCE) {
        throw Unusable("the database " + database + " carries the number " +
                       std::to_string(number) + ", which is not that of a command");
    }
    if (!m_hasProgress) {
        return;
    }
    // A command that was lost may have reached the file all the same, if its disk said that it
    // failed and did not.
    const std::int32_t first = m_current.progress.confirmed;
    const std::int32_t last = (m_pending ? m_after : m_current).progress.sequence;
    if (number >= first && number <= last) {
        return;
    }
    std::string due = "command " + std::to_string(last);
    if (first != last) {
        due = "command " + std::to_string(first) + " to " + std::to_string(last);
    }
    throw Unusable("the memory " + m_path + " and the database " + database +
                   " do not belong together: the memory needs a database at " + due +
                   ", this one is at " + std::to_string(number));
}

void MemoriaFile::Settle(std::int32_t number)
{
    if (!m_hasProgress) {
        // From here on it belongs to this database.
        m_current.progress.sequence = m_current.progress.confirmed = number;
        m_hasProgress = true;
    } else if (m_pending && number == m_after.progress.sequence) {
        m_current = std::move(m_after);
        m_current.progress.confirmed = number;
    } else {
        m_current.progress.confirmed = number;
    }
    m_pending = false;
    WriteSettled(m_current.registro, m_current.progress);
}

void MemoriaFile::Prepare(Snapshot& snapshot, const Memoria& registro,
                          const CommandProgress& progress)
{
    snapshot.progressText = ProgressText(progress);
    snapshot.registroText = "\"registro\":" + MemoriaToJson(registro).dump();
    snapshot.registro = registro;
    snapshot.progress = progress;
}

void MemoriaFile::Write(const std::string& before, const Snapshot& snapshot) const
{
    // In the order of their names, which is the form that Digest gives them.
    const std::string fields = before + snapshot.progressText + ",\"formato\":\"" + FORMAT + "\"," +
                               snapshot.registroText + ",\"versao\":" + std::to_string(VERSION) +
                               "}";
    ReplaceFile(m_path, "{\"digest\":\"" + Sha256Hex("{" + fields) + "\"," + fields + "\n");
}

void MemoriaFile::WritePending(const Memoria& registro, const CommandProgress& progress)
{
    assert(!m_pending && progress.sequence > m_current.progress.sequence);
    if (progress.sequence > MAX_SEQUENCE) {
        throw Unusable("the memory " + m_path + " has no number for another command");
    }
    Prepare(m_after, registro, progress);
    m_pending = true;
    Write("\"antes\":{" + m_current.progressText + "," + m_current.registroText + "},", m_after);
}

void MemoriaFile::Confirm()
{
    assert(m_pending);
    std::swap(m_current, m_after);
    m_pending = false;
    m_current.progress.confirmed = m_current.progress.sequence;
    m_current.progressText = ProgressText(m_current.progress);
}

void MemoriaFile::WriteSettled(const Memoria& registro, const CommandProgress& progress)
{
    Prepare(m_current, registro, progress);
    m_pending = false;
    Write("", m_current);
}

} // namespace bancada
