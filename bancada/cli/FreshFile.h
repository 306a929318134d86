// A file that is made beside the place that it is for, and put there when it is whole.
#pragma once

#include <string>

namespace bancada
{

// A new, empty file with a name of its own in the folder of its place, so that what stands at the
// place stays until the new file is whole, and goes on to stand there when it never is. The file is
// removed with this object unless it was put in its place, and also where INT, TERM or HUP end the
// program meanwhile (of one such file at a time).
class FreshFile
{
  public:
    // Makes the file for the place `place`; where that is a symbolic link, for what it leads to.
    // Throws Unusable, naming the place, if it cannot be made.
    explicit FreshFile(std::string place);
    ~FreshFile();
    FreshFile(const FreshFile&) = delete;
    FreshFile& operator=(const FreshFile&) = delete;

    // Where the file is written until then.
    const std::string& Path() const { return m_path; }

    // Makes the file durable and gives it its place, with the permissions of the file that it
    // replaces. REQUIRES: whoever wrote it has closed it. Throws Unusable if that fails; the place
    // is then as it was.
    void Replace();

    // Likewise, but throws Unusable if something has come to stand at the place.
    void PlaceAnew();

  private:
    void Sync() const;
    [[noreturn]] void Fail() const;

    std::string m_place;  // as the user named it
    std::string m_target; // with symbolic links followed
    std::string m_path;
};

} // namespace bancada
