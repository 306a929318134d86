// Any bytes as a firmware log are read to their end; any texts that are written to one, behind any
// bytes, come back as they were.
#include "bancada/log/FirmwareLog.h"
#include "bancada/log/FirmwareLogReader.h"
#include "bancada/log/Losses.h"
#include "bancada/log/RejectedRow.h"
#include "tests/fuzz/Hold.h"
#include "tests/support/Files.h"

#include <algorithm>
#include <filesystem>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>
#include <vector>

namespace
{

using namespace bancada;

std::vector<std::string> TextsOf(const std::string& path, int& damaged)
{
    FirmwareLogReader reader(path);
    FirmwareLogRecord record;
    std::vector<std::string> texts;
    int line = 0;
    while (reader.Next(record)) {
        Hold(record.line > line);
        line = record.line;
        texts.push_back(record.text);
    }
    damaged = reader.DamagedLines();
    return texts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    static const test_support::TempFolder folder;
    FuzzedDataProvider data(bytes, size);
    std::vector<std::string> texts;
    const int count = data.ConsumeIntegralInRange(0, 4);
    for (int i = 0; i < count; ++i) {
        texts.push_back(data.ConsumeRandomLengthString(200));
    }
    const std::string before = data.ConsumeRemainingBytesAsString();
    const std::string path = folder.Write("firmware.log", before);

    int damaged = 0;
    const std::vector<std::string> found = TextsOf(path, damaged);
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const bool open = !before.empty() && before.back() != '\n';
    Hold(static_cast<std::ptrdiff_t>(found.size()) + damaged == lines + (open ? 1 : 0));
    const Losses losses = ReadLosses(path);
    Hold(losses.rejected.size() + losses.lost.size() <= found.size());
    for (const RejectedStatement& rejected : losses.rejected) {
        static_cast<void>(ReadRejectedRow(rejected.statement));
    }

    {
        FirmwareLog log(path);
        for (const std::string& text : texts) {
            log.Write(text);
        }
        Hold(log.WriteErrors() == 0);
    }
    const std::vector<std::string> after = TextsOf(path, damaged);
    // The last line of those before may have been cut short: it ends where the log goes on.
    Hold(after.size() >= texts.size());
    Hold(std::equal(texts.rbegin(), texts.rend(), after.rbegin()));
    return 0;
}
