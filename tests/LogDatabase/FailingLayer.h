// The engine's own file layer, with calls that fail.
#pragma once

#include <cstddef>
#include <sqlite3.h>

// Registered as "failing" while it lives: one at a time. A call answers what is set for it;
// SQLITE_OK is what the real one answers.
class FailingLayer
{
  public:
    static constexpr char NAME[] = "failing";

    FailingLayer();
    ~FailingLayer();
    FailingLayer(const FailingLayer&) = delete;
    FailingLayer& operator=(const FailingLayer&) = delete;

    int open = SQLITE_OK;
    bool opensAllTheSame = false; // what it says cannot be opened is open, and to be closed
    int access = SQLITE_OK;
    int fullPathname = SQLITE_OK;
    int fileSize = SQLITE_OK;
    const char* undeletable = nullptr; // how a name ends that cannot be deleted
    int sharedLocks = 0;               // so many answer sharedLock
    int sharedLock = SQLITE_OK;
    bool syncs = true;  // it says so in any case
    int writesLeft = 0; // to the one that fails, and to the sync that does; 0: none does
    int syncsLeft = 0;
    int sizesLostBehind = 0; // so many sizes of files cannot be had behind it
    int sizesLost = 0;

    std::size_t CountOpen() const; // files that are open

    void NeedBytesAFile(int bytes) { m_vfs.szOsFile = bytes; }

  private:
    sqlite3_vfs m_vfs;
};
