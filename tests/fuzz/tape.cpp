// Any bytes as a tape: each line is a command or refused with its place, and a reader that goes on
// behind a line reads the same.
#include "bancada/tape/TapeReader.h"
#include "tests/fuzz/Hold.h"
#include "tests/fuzz/TapeLines.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <string>
#include <vector>

namespace
{

using namespace bancada;

void HoldPlace(const Place& place, const std::vector<std::size_t>& lengths)
{
    Hold(place.line >= 1 && static_cast<std::size_t>(place.line) <= lengths.size());
    Hold(place.column >= 1 && static_cast<std::size_t>(place.column) <=
                                  lengths[static_cast<std::size_t>(place.line) - 1] + 1);
}

std::vector<std::size_t> LengthsOf(const std::string& text)
{
    std::vector<std::size_t> lengths = {0};
    for (const char character : text) {
        if (character == '\n') {
            lengths.push_back(0);
        } else {
            ++lengths.back();
        }
    }
    return lengths;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    static const test_support::TempFolder folder;
    const std::string text(reinterpret_cast<const char*>(bytes), size);
    const std::string path = folder.Write("tape.jsonl", text);

    TapeReader tape(path);
    std::string error;
    const std::vector<LineRead> lines = ReadAll(tape, error);
    Hold(tape.BytesRead() <= tape.Size());
    const std::vector<std::size_t> lengths = LengthsOf(text);
    for (const LineRead& line : lines) {
        HoldPlace(line.command.place, lengths);
        HoldPlace(line.command.namePlace, lengths);
        for (const TapeField& field : line.command.fields) {
            HoldPlace(field.namePlace, lengths);
            HoldPlace(field.valuePlace, lengths);
            Hold(field.value.text.find('\0') == std::string::npos);
        }
    }
    // Behind each line, the rest.
    for (std::size_t i = 0; i < lines.size(); i += 1 + lines.size() / 4) {
        TapeReader again(path);
        Hold(again.Continue(lines[i].behind));
        std::string sameError;
        const std::vector<LineRead> rest = ReadAll(again, sameError);
        Hold(sameError == error && rest.size() == lines.size() - i - 1);
        Hold(rest.empty() || rest.front().command.name == lines[i + 1].command.name);
        Hold(rest.empty() || rest.back().behind.digest == lines.back().behind.digest);
    }
    return 0;
}
