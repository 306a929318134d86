#include "bancada/memoria/ProgressJson.h"

#include "bancada/Messages.h"
#include "bancada/memoria/JsonChanges.h"
#include "bancada/memoria/JsonReader.h"
#include "bancada/memoria/JsonWriter.h"

namespace bancada
{
namespace
{

constexpr int MAX_LINES = std::numeric_limits<int>::max() - 1;
constexpr std::int64_t MAX_INT64 = std::numeric_limits<std::int64_t>::max();

// V and E as in MemoriaFields.h.
template <class V, class E>
void VisitProgress(V& v, E& progress)
{
    v.Integer("passos", progress.steps, 0, MAX_INT64);
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

void Read(CommandProgress& progress, JsonReader reader, const std::string& place)
{
    VisitProgress(reader, progress);
    reader.Finish();
    if (progress.confirmed > progress.sequence) {
        throw InvalidField(place + ".confirmada", Tr("it is more than sequencia"));
    }
}

} // namespace

nlohmann::json ProgressToJson(const CommandProgress& progress)
{
    JsonWriter fields;
    VisitProgress(fields, progress);
    return fields.Finish();
}

CommandProgress ProgressFromJson(const nlohmann::json& json, const std::string& place)
{
    CommandProgress progress;
    Read(progress, JsonReader(json, place), place);
    return progress;
}

std::string TakeProgressChanges(CommandProgress& before, const CommandProgress& after)
{
    return JsonChanges::Take(before, after, [](JsonChanges& v, const CommandProgress& progress) {
        VisitProgress(v, progress);
    });
}

void ChangeProgress(CommandProgress& progress, const nlohmann::json& changes,
                    const std::string& place)
{
    Read(progress, JsonReader(changes, place, JsonForm::CHANGES), place);
}

} // namespace bancada
