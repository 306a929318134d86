// A write-ahead log of which each field is wrong in turn.
#include "bancada/recuperacao/WriteAheadLog.h"

#include "tests/support/Files.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace bancada::recuperacao
{
namespace
{

constexpr std::uint32_t MAGIC = 0x377F0682;

// What a log is made of, and how it can be wrong.
struct Log {
    std::uint32_t magic = MAGIC;
    std::uint32_t version = 3007000;
    std::uint32_t pageSize = 512;
    std::uint32_t page = 2;
    std::uint32_t frameSalt = 7;
    std::uint32_t sumError = 0;
    std::uint32_t frameSumError = 0;
};

void Append32(std::string& bytes, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> static_cast<unsigned>(shift) & 0xFFU);
    }
}

// The format's running checksum of words of either order.
struct Sum {
    bool bigEndian;
    std::uint32_t s0 = 0, s1 = 0;

    void Add(const std::string& bytes)
    {
        for (std::size_t i = 0; i < bytes.size(); i += 8) {
            s0 += Word(bytes, i) + s1;
            s1 += Word(bytes, i + 4) + s0;
        }
    }
    std::uint32_t Word(const std::string& bytes, std::size_t at) const
    {
        std::uint32_t word = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            word = word << 8U | static_cast<unsigned char>(bytes[at + (bigEndian ? i : 3 - i)]);
        }
        return word;
    }
};

// A log of one frame that is committed.
std::string Written(const Log& log)
{
    Sum sum{(log.magic & 1U) != 0};
    std::string bytes;
    for (const std::uint32_t word : {log.magic, log.version, log.pageSize, 0U, 7U, 8U}) {
        Append32(bytes, word);
    }
    sum.Add(bytes);
    Append32(bytes, sum.s0);
    Append32(bytes, sum.s1 + log.sumError);
    std::string frame;
    Append32(frame, log.page);
    Append32(frame, 3); // pages of the database
    const std::string content(log.pageSize, 'p');
    sum.Add(frame);
    sum.Add(content);
    Append32(frame, log.frameSalt);
    Append32(frame, 8);
    Append32(frame, sum.s0);
    Append32(frame, sum.s1 + log.frameSumError);
    return bytes + frame + content;
}

class WriteAheadLogTest : public testing::Test
{
  protected:
    bool HasPages(const std::string& bytes) const
    {
        return WriteAheadLog(folder.Write("wal", bytes)).HasPages();
    }
    // With one thing wrong.
    bool HasPages(const std::function<void(Log&)>& change) const
    {
        Log log;
        change(log);
        return HasPages(Written(log));
    }

    test_support::TempFolder folder;
};

TEST_F(WriteAheadLogTest, HasTheFramesOfEitherByteOrder)
{
    for (const std::uint32_t magic : {MAGIC, MAGIC | 1U}) {
        Log written;
        written.magic = magic;
        WriteAheadLog log(folder.Write("wal", Written(written)));
        ASSERT_TRUE(log.HasPages());
        EXPECT_EQ(log.PageSize(), 512U);
        EXPECT_EQ(log.DatabasePages(), 3U);
        EXPECT_EQ(log.BytesNotRead(), 0U);
        std::string content;
        EXPECT_TRUE(log.Read(2, content));
        EXPECT_EQ(content, std::string(512, 'p'));
        EXPECT_FALSE(log.Read(1, content));
    }
    EXPECT_TRUE(HasPages([](Log& log) { log.pageSize = 65536; }));
}

TEST_F(WriteAheadLogTest, HasNoneOfWhatIsNoLog)
{
    EXPECT_FALSE(WriteAheadLog(folder.File("none")).HasPages());
    EXPECT_FALSE(HasPages(std::string()));
    EXPECT_FALSE(HasPages(Written({}).substr(0, 31)));
    EXPECT_FALSE(HasPages(Written({}).substr(0, 32)));
    EXPECT_FALSE(HasPages(Written({}).substr(0, 567)));
    EXPECT_FALSE(HasPages([](Log& log) { log.magic = MAGIC + 2; }));
    EXPECT_FALSE(HasPages([](Log& log) { ++log.version; }));
    EXPECT_FALSE(HasPages([](Log& log) { log.pageSize = 256; }));
    EXPECT_FALSE(HasPages([](Log& log) { log.pageSize = 131072; }));
    EXPECT_FALSE(HasPages([](Log& log) { log.pageSize = 768; }));
    EXPECT_FALSE(HasPages([](Log& log) { log.sumError = 1; }));
    EXPECT_FALSE(HasPages([](Log& log) { log.page = 0; }));
    EXPECT_FALSE(HasPages([](Log& log) { ++log.frameSalt; }));
    EXPECT_FALSE(HasPages([](Log& log) { log.frameSumError = 1; }));
}

} // namespace
} // namespace bancada::recuperacao
