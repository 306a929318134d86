// How many steps the engine takes: what a reading costs, whatever the machine does meanwhile.
#pragma once

#include <cstdint>

#include <sqlite3.h>

// Counts the virtual machine's steps on every connection that is opened while it lives. One at a
// time.
class EngineSteps
{
  public:
    EngineSteps()
    {
        Count() = 0;
        sqlite3_auto_extension(Entry());
    }
    ~EngineSteps() { sqlite3_cancel_auto_extension(Entry()); }
    EngineSteps(const EngineSteps&) = delete;
    EngineSteps& operator=(const EngineSteps&) = delete;

    std::int64_t Taken() const { return Count(); }

  private:
    static std::int64_t& Count()
    {
        static std::int64_t count = 0;
        return count;
    }

    static int OnStep(void*)
    {
        ++Count();
        return 0;
    }

    static int OnOpen(sqlite3* db, const char**, const void*)
    {
        sqlite3_progress_handler(db, 1, &OnStep, nullptr);
        return SQLITE_OK;
    }

    // The engine calls it with the arguments that OnOpen has; its declaration is without any.
    static void (*Entry())() { return reinterpret_cast<void (*)()>(&OnOpen); }
};
