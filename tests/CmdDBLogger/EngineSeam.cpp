#include "tests/CmdDBLogger/EngineSeam.h"

#include "FiscalData/RateioSubtotal.h"
#include "Interpreter.h"
#include "MfdServices/GravaLog.h"

#include <sqlite3.h>

EngineSeam seam;

namespace
{

// Whether an allocation of `size` bytes is the message's and is to fail.
bool IsMessageWithoutMemory(std::size_t size)
{
    if (!seam.nextMallocIsTheMessages) {
        return false;
    }
    seam.nextMallocIsTheMessages = false;
    seam.messageBytes = size;
    return seam.messageOutOfMemory;
}

// Notes where the library stands: a function that the linker put in between has its frame there.
void NoteCall(const void* frame)
{
    if (seam.lowestCall == nullptr || frame < seam.lowestCall) {
        seam.lowestCall = frame;
    }
}

} // namespace

void Vindral_GravaLog(char* text)
{
    seam.log.emplace_back(text);
}

int GetRatearSubtotal()
{
    if (seam.calls != nullptr) {
        seam.calls->push_back("GetRatearSubtotal()");
    }
    return seam.ratearSubtotal;
}

using ExecCallback = int (*)(void*, int, char**, char**);

extern "C" {

int __real_sqlite3_exec(sqlite3* db, const char* sql, ExecCallback callback, void* argument,
                        char** errorText);

int __wrap_sqlite3_exec(sqlite3* db, const char* sql, ExecCallback callback, void* argument,
                        char** errorText)
{
    NoteCall(__builtin_frame_address(0));
    seam.statements.emplace_back(sql);
    if (seam.engineOutOfMemory) {
        seam.nextMallocIsTheMessages = true;
        return SQLITE_NOMEM;
    }
    const int result = __real_sqlite3_exec(db, sql, callback, argument, errorText);
    seam.nextMallocIsTheMessages = result != SQLITE_OK;
    return result;
}

int __real_sqlite3_prepare_v2(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                              const char** tail);

int __wrap_sqlite3_prepare_v2(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                              const char** tail)
{
    NoteCall(__builtin_frame_address(0));
    seam.queries.push_back({sql, bytes});
    return __real_sqlite3_prepare_v2(db, sql, bytes, statement, tail);
}

void* __real_malloc(std::size_t size);

void* __wrap_malloc(std::size_t size)
{
    return IsMessageWithoutMemory(size) ? nullptr : __real_malloc(size);
}

// An optimizer makes one calloc of a malloc and the clearing of its block.
void* __real_calloc(std::size_t count, std::size_t size);

void* __wrap_calloc(std::size_t count, std::size_t size)
{
    return IsMessageWithoutMemory(count * size) ? nullptr : __real_calloc(count, size);
}

// BOOL Command::DBLoggerExecuteSQL(sqlite3* db, const char* sql)
BOOL __real__ZN7Command18DBLoggerExecuteSQLEP7sqlite3PKc(Command* command, sqlite3* db,
                                                         const char* sql);

BOOL __wrap__ZN7Command18DBLoggerExecuteSQLEP7sqlite3PKc(Command* command, sqlite3* db,
                                                         const char* sql)
{
    const BOOL result = __real__ZN7Command18DBLoggerExecuteSQLEP7sqlite3PKc(command, db, sql);
    if (seam.executionsPassed > 0) {
        --seam.executionsPassed;
        return result;
    }
    if (seam.executionsRejected > 0) {
        --seam.executionsRejected;
        return seam.reportedResult;
    }
    return result;
}

// char* Financial::ToString(char* out, int size, FINANCIAL_STR_TIPO tipo, int decimals, short)
// const
char* __real__ZNK9Financial8ToStringEPci18FINANCIAL_STR_TIPOis(const Financial* value, char* out,
                                                               int size, FINANCIAL_STR_TIPO style,
                                                               int decimals, short last);

char* __wrap__ZNK9Financial8ToStringEPci18FINANCIAL_STR_TIPOis(const Financial* value, char* out,
                                                               int size, FINANCIAL_STR_TIPO style,
                                                               int decimals, short last)
{
    seam.money.push_back({size, style, decimals, last});
    return __real__ZNK9Financial8ToStringEPci18FINANCIAL_STR_TIPOis(value, out, size, style,
                                                                    decimals, last);
}

} // extern "C"
