// Any bytes as a legal audit file.
#include "tests/fuzz/AuditFile.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    HoldAuditFile(std::string(reinterpret_cast<const char*>(bytes), size));
    return 0;
}
