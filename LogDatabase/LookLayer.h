// A file layer that changes nothing.
#pragma once

#include <sqlite3.h>

namespace log_database
{

// What the engine reads through it is what `vfs` has; what it writes, so as to recover what it
// reads, is kept in the engine's memory while the file is open, and read again from there. A file
// that is not there is an empty one, and none is made or deleted. Locks are those of `vfs`, and so
// is the memory that connections to a write-ahead log share. Registered under a name of its own
// while it lives; all connections that use it are closed before it ends.
class LookLayer
{
  public:
    // Of the file layer of that name; null is the engine's default.
    explicit LookLayer(const char* vfs);
    ~LookLayer();
    LookLayer(const LookLayer&) = delete;
    LookLayer& operator=(const LookLayer&) = delete;

    const char* Name() const { return m_name; }

  private:
    static LookLayer& Of(sqlite3_vfs* vfs);
    static int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags,
                    int* outFlags);
    static int Delete(sqlite3_vfs* vfs, const char* name, int syncs);
    static int Access(sqlite3_vfs* vfs, const char* name, int flags, int* answer);
    static int FullPathname(sqlite3_vfs* vfs, const char* name, int size, char* path);
    static int Randomness(sqlite3_vfs* vfs, int length, char* bytes);
    static int Sleep(sqlite3_vfs* vfs, int microseconds);
    static int CurrentTime(sqlite3_vfs* vfs, double* julianDay);
    static int GetLastError(sqlite3_vfs* vfs, int size, char* text);

    char m_name[40];
    sqlite3_vfs m_vfs = {};
    sqlite3_vfs* m_real;
    bool m_journalGone = false; // the engine has rolled it back, and takes it for deleted
};

} // namespace log_database
