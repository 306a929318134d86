// Keeps a second run away from a file.
#pragma once

#include <string>

namespace bancada
{

// The lock of a file that one run at a time may write. It is an empty file beside it, with .lock
// added to its name, which is locked while this object lives: the lock ends with the process,
// however that ends, and whoever only reads the file knows nothing of it. (A lock on the file
// itself would not do: closing a descriptor of it would drop the engine's own locks, and a memory
// is replaced by another file again and again.)
class FileLock
{
  public:
    // Takes the lock of the file `path`, which need not exist; `what` names it in messages ("the
    // database db"). Throws Unusable if another process holds the lock, or if a file that is no
    // lock has its name. That it cannot be made for another reason is for Require to say; in a
    // folder that is missing there is nothing to lock, and whoever opens the file says so.
    FileLock(const std::string& path, const std::string& what);
    // Removes the file and gives the lock back.
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Throws Unusable, with the reason, if the lock could not be taken.
    void Require() const;

  private:
    bool Take();

    std::string m_path; // of the lock
    std::string m_what;
    int m_file = -1;
    int m_error = 0; // why it could not be made
};

} // namespace bancada
