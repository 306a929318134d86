// Any bytes as a memory, and behind the first line that is empty as its journal.
#include "tests/fuzz/Memory.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    constexpr std::string_view BETWEEN = "\n\n";
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    const std::size_t end = text.find(BETWEEN);
    Files files = {{MEMORY, std::string(text.substr(0, end))}};
    if (end != std::string_view::npos) {
        files[JOURNAL] = text.substr(end + BETWEEN.size());
    }
    HoldMemory(files);
    return 0;
}
