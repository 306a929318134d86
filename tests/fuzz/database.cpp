// A logging database damaged in its pages, its header or its log before all that reads one. What
// `recover` makes of it is a sound database again, which reads as any other.
#include "bancada/recuperacao/Recuperacao.h"
#include "tests/fuzz/Damage.h"
#include "tests/fuzz/Day.h"
#include "tests/fuzz/Readers.h"

#include <filesystem>
#include <sqlite3.h>
#include <string>

namespace
{

constexpr std::size_t PAGE_BYTES = 1024;
// Of a write-ahead log, before its first frame, and of a frame before its page.
constexpr std::size_t LOG_HEAD = 32;
constexpr std::size_t FRAME_BYTES = 24 + PAGE_BYTES;

bool IsSound(const std::string& path)
{
    sqlite3* db = nullptr;
    bool sound = false;
    const auto onRow = [](void* answer, int, char** values, char**) {
        *static_cast<bool*>(answer) = std::string(values[0]) == "ok";
        return 0;
    };
    if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
        sqlite3_exec(db, "PRAGMA integrity_check(1)", onRow, &sound, nullptr);
    }
    sqlite3_close(db);
    return sound;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const bool withLog = data.ConsumeBool();
    std::string database = withLog ? ADay().cut : ADay().closed;
    std::string log = withLog ? ADay().log : "";
    const bool recover = data.ConsumeBool();
    const int reader = data.ConsumeIntegralInRange(0, READERS - 1);
    const int number = data.ConsumeIntegralInRange(1, 40);
    for (int i = 0; i < 16 && data.remaining_bytes() > 0; ++i) {
        if (withLog && data.ConsumeBool()) {
            DamagePage(log, LOG_HEAD, FRAME_BYTES, data);
        } else {
            DamagePage(database, 0, PAGE_BYTES, data);
        }
    }

    const std::string path = Scratch().Write("damaged.db", database);
    const std::string logPath = Scratch().File("damaged.db-wal");
    std::filesystem::remove(logPath);
    if (withLog) {
        Scratch().Write("damaged.db-wal", log);
    }
    if (recover) {
        const std::string to = Scratch().Write("recovered.db", "");
        ReadOrRefuse([&] {
            static_cast<void>(bancada::recuperacao::Recover(path, to));
            Hold(IsSound(to));
            ReadDatabase(to, reader, number);
        });
    } else {
        ReadDatabase(path, reader, number);
    }
    // They have only read.
    Hold(Scratch().Read("damaged.db") == database);
    Hold(!withLog || Scratch().Read("damaged.db-wal") == log);
    return 0;
}
