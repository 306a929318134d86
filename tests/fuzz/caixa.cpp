// Any bytes as a tape that is run: each command is executed or refused with a reason, none is lost,
// and what the register makes of it is a state that its memory takes.
#include "bancada/caixa/Caixa.h"
#include "bancada/memoria/MemoriaJson.h"
#include "bancada/tape/TapeClock.h"
#include "bancada/tape/TapeReader.h"
#include "tests/fuzz/Hold.h"
#include "tests/fuzz/TapeLines.h"
#include "tests/support/Files.h"

#include <string>
#include <vector>

namespace
{

using namespace bancada;

void RunAll(const std::vector<LineRead>& lines)
{
    Caixa caixa(":memory:");
    TapeClock clock;
    try {
        for (const LineRead& line : lines) {
            const Answer answer = caixa.Run(line.command, clock);
            Hold(answer.fate != Answer::Fate::REFUSED || !answer.reason.empty());
            Hold(answer.fate != Answer::Fate::LOST);
            const nlohmann::json state = MemoriaToJson(caixa.GetRegistro().GetMemoria());
            Hold(MemoriaToJson(MemoriaFromJson(nlohmann::json::parse(state.dump()), "")) == state);
        }
    } catch (const TapeError&) {
        // A line that is no command with its fields ends the run.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    static const test_support::TempFolder folder;
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    TapeReader tape(folder.Write("tape.jsonl", text));
    std::string error;
    const std::vector<LineRead> lines = ReadAll(tape, error);
    if (!lines.empty()) {
        RunAll(lines);
    }
    return 0;
}
