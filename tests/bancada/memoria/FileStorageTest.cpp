// The file calls of a memory, and what is said of those that fail.
#include "bancada/memoria/FileStorage.h"

#include "bancada/Unusable.h"
#include "tests/support/Files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace
{

using bancada::FileStorage;
using bancada::Unusable;

class FileStorageTest : public testing::Test
{
  protected:
    std::string Path() const { return folder.File("f"); }

    template <class Call>
    static std::string Refusal(const Call& call)
    {
        try {
            call();
        } catch (const Unusable& unusable) {
            return unusable.what();
        }
        return "";
    }

    test_support::TempFolder folder;
    FileStorage storage;
};

TEST_F(FileStorageTest, AFileIsMadeAndAddedTo)
{
    storage.Create(Path(), "one ", Path());
    storage.Append("two ");
    storage.Append("three");
    EXPECT_EQ(folder.Read("f"), "one two three");
    EXPECT_EQ(storage.Read(Path(), 13), "one two three");
    storage.Create(Path(), "new", Path());
    storage.Append("er");
    EXPECT_EQ(folder.Read("f"), "newer");
}

TEST_F(FileStorageTest, AFileIsReplacedAndRemoved)
{
    storage.Replace(Path(), "one");
    EXPECT_EQ(folder.Read("f"), "one");
    storage.Replace(Path(), "two");
    EXPECT_EQ(folder.Read("f"), "two");
    storage.Remove(Path());
    EXPECT_FALSE(folder.Has("f"));
    EXPECT_EQ(storage.Read(Path(), 100), std::nullopt);
    EXPECT_EQ(Refusal([&] { storage.Remove(Path()); }), "") << "a file that is missing";
}

TEST_F(FileStorageTest, AnotherFileTakesWhatIsAddedNext)
{
    storage.Create(Path(), "a", Path());
    storage.Create(folder.File("g"), "b", Path());
    storage.Append("c");
    EXPECT_EQ(folder.Read("f"), "a");
    EXPECT_EQ(folder.Read("g"), "bc");
}

TEST_F(FileStorageTest, WhatCannotBeRemovedIsNamed)
{
    std::filesystem::create_directory(Path());
    EXPECT_EQ(Refusal([&] { storage.Remove(Path()); }).rfind("cannot remove " + Path() + ": ", 0),
              0U);
}

TEST_F(FileStorageTest, WhatIsTooLongIsRefused)
{
    storage.Replace(Path(), "four");
    EXPECT_EQ(storage.Read(Path(), 4), "four");
    EXPECT_EQ(Refusal([&] { static_cast<void>(storage.Read(Path(), 3)); }),
              "cannot read " + Path() + ": it has more than 3 bytes");
}

TEST_F(FileStorageTest, AFolderThatIsNotThereTakesNoFile)
{
    const std::string path = folder.File("none/f");
    EXPECT_EQ(Refusal([&] { storage.Create(path, "", path); }),
              "cannot write " + path + ": No such file or directory");
    EXPECT_EQ(Refusal([&] { storage.Replace(path, ""); }),
              "cannot write " + path + ".tmp: No such file or directory");
}

} // namespace
