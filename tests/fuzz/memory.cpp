// A register's memory and its journal with any of their fields another, sealed again with the
// digests that they are due.
#include "tests/fuzz/Memory.h"
#include "bancada/Sha256.h"
#include "bancada/memoria/MemoriaJson.h"
#include "tests/fuzz/Day.h"

#include <fuzzer/FuzzedDataProvider.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

using namespace bancada;
using nlohmann::json;

json AnyValue(FuzzedDataProvider& data)
{
    switch (data.ConsumeIntegralInRange(0, 9)) {
    case 0:
        return nullptr;
    case 1:
        return data.ConsumeBool();
    case 2:
        return data.ConsumeIntegral<std::int64_t>();
    case 3:
        return data.ConsumeIntegral<std::uint64_t>();
    case 4:
        return data.ConsumeIntegralInRange(-2, 1000);
    case 5:
        return data.ConsumeFloatingPoint<double>();
    case 6:
        return json::array({data.ConsumeIntegralInRange(0, 9), ""});
    case 7:
        return json::object({{data.ConsumeRandomLengthString(8), 1}});
    default: {
        // A text of JSON is UTF-8; what is none is tried as bytes.
        std::string text = data.ConsumeRandomLengthString(60);
        return json::accept("\"" + text + "\"") ? json(text) : json("2147483648,00");
    }
    }
}

// Changes one of the fields, or adds one, or takes one away, as deep as it may stand.
void ChangeField(json& value, FuzzedDataProvider& data)
{
    if (value.is_structured() && !value.empty() && data.ConsumeIntegralInRange(0, 15) != 0) {
        const std::size_t at = data.ConsumeIntegralInRange<std::size_t>(0, value.size() - 1);
        const auto field = std::next(value.begin(), static_cast<std::ptrdiff_t>(at));
        if (data.ConsumeIntegralInRange(0, 15) == 0) {
            value.erase(field);
        } else {
            ChangeField(*field, data);
        }
    } else if (value.is_object()) {
        value[data.ConsumeRandomLengthString(12)] = AnyValue(data);
    } else if (value.is_array()) {
        value.push_back(AnyValue(data));
    } else {
        value = AnyValue(data);
    }
}

std::string Dump(const json& value)
{
    return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

// Memory and journal of a register that goes from the middle of a receipt to the end of the day.
Files Written()
{
    auto files = std::make_shared<Files>();
    MemoriaFile memory(MEMORY, std::make_unique<MapStorage>(files));
    memory.Settle(0);
    CommandProgress progress = memory.GetProgress();
    memory.WriteSettled(ADay().open, progress);
    progress = memory.GetProgress();
    ++progress.sequence;
    progress.tape.line = 3;
    progress.tape.bytes = 100;
    progress.tape.digest = Sha256Hex("");
    memory.WritePending(ADay().end, progress);
    return *files;
}

std::string Sealed(json memory)
{
    memory.erase("digest");
    if (memory.is_object()) {
        memory["digest"] = Sha256Hex(Dump(memory));
    }
    return Dump(memory);
}

std::string SealedLine(const std::string& memory, const std::string& record)
{
    return Sha256Hex(memory + record) + " " + record + "\n";
}

// The lines of a journal as objects of JSON.
std::vector<json> RecordsOf(const std::string& journal)
{
    std::vector<json> records;
    std::istringstream lines(journal);
    for (std::string line; std::getline(lines, line);) {
        if (!line.empty()) {
            records.push_back(json::parse(line.substr(line.find(' ') + 1)));
        }
    }
    return records;
}

Files Changed(FuzzedDataProvider& data)
{
    static const Files written = Written();
    json memory = json::parse(written.at(MEMORY));
    std::vector<json> records = RecordsOf(written.at(JOURNAL));
    if (data.ConsumeBool()) {
        // The state of the middle of a receipt in the file itself, with all its fields.
        memory["registro"] = MemoriaToJson(ADay().open);
    }
    if (data.ConsumeBool()) {
        memory["antes"] = {{"registro", memory["registro"]}, {"execucao", memory["execucao"]}};
        memory["execucao"]["sequencia"] = 1;
    }
    const bool withJournal = data.ConsumeBool();
    for (int i = 0; i < 6 && data.remaining_bytes() > 0; ++i) {
        const std::size_t which = data.ConsumeIntegralInRange<std::size_t>(0, records.size());
        ChangeField(which == 0 || !withJournal ? memory : records[which - 1], data);
    }
    Files files = {{MEMORY, Sealed(memory)}};
    if (withJournal) {
        const json sealed = json::parse(files[MEMORY]);
        const std::string digest =
            sealed.is_object() ? sealed["digest"].get<std::string>() : std::string();
        if (records[0].is_object() && records[0].value("memoria", json()).is_string()) {
            records[0]["memoria"] = digest;
        }
        files[JOURNAL] = SealedLine("", Dump(records[0]));
        for (std::size_t i = 1; i < records.size(); ++i) {
            files[JOURNAL] += SealedLine(digest, Dump(records[i]));
        }
    }
    return files;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    HoldMemory(Changed(data));
    return 0;
}
