// A legal audit file with any of its records changed, missing, doubled or elsewhere.
#include "tests/fuzz/AuditFile.h"

#include <algorithm>
#include <fuzzer/FuzzedDataProvider.h>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace
{

std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line + "\n");
    }
    return lines;
}

void Change(std::vector<std::string>& lines, FuzzedDataProvider& data)
{
    if (lines.empty()) {
        return;
    }
    const auto anyLine = [&] {
        return data.ConsumeIntegralInRange<std::size_t>(0, lines.size() - 1);
    };
    const std::size_t at = anyLine();
    std::string& line = lines[at];
    if (line.empty()) {
        line = "\n";
    }
    const auto place = lines.begin() + static_cast<std::ptrdiff_t>(at);
    switch (data.ConsumeIntegralInRange(0, 9)) {
    case 0:
        lines.erase(place);
        break;
    case 1:
        lines.insert(place, std::string(line));
        break;
    case 2:
        std::swap(line, lines[anyLine()]);
        break;
    case 3:
        line.resize(data.ConsumeIntegralInRange<std::size_t>(0, line.size()));
        break;
    case 4:
        line = data.ConsumeRandomLengthString(300) + "\n";
        break;
    case 5: { // a field of digits, as large as it can be
        const std::size_t from = data.ConsumeIntegralInRange<std::size_t>(0, line.size() - 1);
        const char digit = data.PickValueInArray({'9', '0', '1'});
        for (std::size_t i = from; i < line.size() && i < from + 13; ++i) {
            if (line[i] >= '0' && line[i] <= '9') {
                line[i] = digit;
            }
        }
        break;
    }
    default: {
        const std::string text = data.ConsumeRandomLengthString(14);
        const std::size_t from = data.ConsumeIntegralInRange<std::size_t>(0, line.size() - 1);
        line.replace(from, std::min(text.size(), line.size() - from), text);
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    static const std::vector<std::string> day = LinesOf(ADay().auditFile);
    std::vector<std::string> lines = day;
    for (int i = 0; i < 8 && data.remaining_bytes() > 0; ++i) {
        Change(lines, data);
    }
    std::string text;
    for (const std::string& line : lines) {
        text += line;
    }
    HoldAuditFile(text);
    return 0;
}
