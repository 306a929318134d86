// A folder that a subcommand writes.
#pragma once

#include <string>

namespace bancada
{

// Written beside its place and put there when it is whole, so that a failed run leaves nothing.
class FreshFolder
{
  public:
    // Throws Unusable, naming the place, if there is anything but an empty folder or if nothing can
    // be made there.
    explicit FreshFolder(std::string place);
    ~FreshFolder();
    FreshFolder(const FreshFolder&) = delete;
    FreshFolder& operator=(const FreshFolder&) = delete;

    // A file in it, whole. Throws Unusable if it cannot be written.
    void Write(const std::string& name, const std::string& content);

    // All is written. Throws Unusable if it cannot be put into its place.
    void Commit();

  private:
    [[noreturn]] void Fail() const;

    std::string m_place;
    std::string m_path; // empty when it is in its place
};

} // namespace bancada
