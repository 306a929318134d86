#include "bancada/arquivo/RecordReader.h"

#include "bancada/Unusable.h"
#include "tests/bancada/arquivo/Samples.h"
#include "tests/support/Files.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace bancada::arquivo
{
namespace
{

using arquivo_test::SampleRecord;
using arquivo_test::SAMPLES;

class RecordReaderTest : public testing::Test
{
  protected:
    std::string Path() const { return folder.File("f.txt"); }

    std::vector<std::string> Lines(const std::string& content)
    {
        folder.Write("f.txt", content);
        RecordReader reader(Path());
        std::vector<std::string> lines;
        Record record;
        while (reader.Next(record)) {
            lines.push_back(std::to_string(record.Number()) + " " + record.Line());
        }
        return lines;
    }

    // What the reader says of it, behind the path.
    std::string Fault(const std::string& content)
    {
        try {
            Lines(content);
        } catch (const Unusable& error) {
            const std::string text = error.what();
            return text.substr(0, Path().size()) == Path() ? text.substr(Path().size()) : text;
        }
        return "";
    }

    test_support::TempFolder folder;
};

std::string Sample(const std::string& type)
{
    for (const SampleRecord& sample : SAMPLES) {
        if (type == sample.type) {
            return sample.one;
        }
    }
    return "";
}

TEST_F(RecordReaderTest, ReadsEveryTypeWithEitherEndOfLine)
{
    std::string crlf;
    std::string lf;
    std::vector<std::string> expected;
    for (const SampleRecord& sample : SAMPLES) {
        crlf += std::string(sample.one) + "\r\n";
        lf += std::string(sample.one) + "\n";
        expected.push_back(std::to_string(expected.size() + 1) + " " + sample.one);
    }
    EXPECT_EQ(Lines(crlf), expected);
    EXPECT_EQ(Lines(lf), expected);
    lf.pop_back();
    EXPECT_EQ(Lines(lf), expected) << "the last line may go without its end";
    EXPECT_TRUE(Lines("").empty());
}

TEST_F(RecordReaderTest, RecordsOfMoreThanTheBufferAreAllThere)
{
    std::string content;
    for (int i = 0; i < 2000; ++i) {
        content += Sample("E15") + "\r\n";
    }
    const std::vector<std::string> lines = Lines(content);
    ASSERT_EQ(lines.size(), 2000U);
    EXPECT_EQ(lines.back(), "2000 " + Sample("E15"));
}

TEST_F(RecordReaderTest, ATypeWithoutDataIsPassedOver)
{
    const std::string none = "E16" + Sample("E14").substr(3, 41);
    EXPECT_EQ(Lines(Sample("E14") + "\n" + none + "\n" + Sample("E21") + "\n"),
              (std::vector<std::string>{"1 " + Sample("E14"), "3 " + Sample("E21")}));
}

TEST_F(RecordReaderTest, SaysLineRecordFieldAndPositions)
{
    std::string digits = Sample("E14");
    digits[46] = ' ';
    EXPECT_EQ(Fault(Sample("E12") + "\n" + digits + "\n"),
              ":2: E14, ccf (positions 47-52): digits are due, not \"" + digits.substr(46, 6) +
                  "\"");
    std::string date = Sample("E14");
    date.replace(58, 8, "20230229");
    EXPECT_EQ(Fault(date), ":1: E14, data_abertura (positions 59-66): a date AAAAMMDD is due, not "
                           "\"20230229\"");
    date.replace(58, 8, "20240229");
    EXPECT_EQ(Fault(date), "");
    date.replace(58, 8, "00000000");
    EXPECT_EQ(Fault(date), "");
    std::string time = Sample("E12");
    time.replace(80, 6, "240000");
    EXPECT_EQ(Fault(time), ":1: E12, hora_emissao (positions 81-86): a time HHMMSS is due, not "
                           "\"240000\"");
    std::string letter = Sample("E15");
    letter[80] = '\xE7';
    EXPECT_EQ(Fault(letter),
              ":1: E15, descricao (positions 76-175): ASCII letters are due, not \"" +
                  letter.substr(75, 5) + "?" + letter.substr(81, 94) + "\"");
}

TEST_F(RecordReaderTest, SaysWhatIsNoRecord)
{
    EXPECT_EQ(Fault("\n"), ":1: a record begins with its type, E01 to E21 or EAD, not with \"\"");
    EXPECT_EQ(Fault("E22 and more\n"),
              ":1: a record begins with its type, E01 to E21 or EAD, not with \"E22\"");
    EXPECT_EQ(Fault(Sample("E14") + " \r\n"), ":1: E14 has 191 positions, not 192");
    EXPECT_EQ(Fault(Sample("E01").substr(0, 44) + "\n"), ":1: E01 has 166 positions, not 44");
    EXPECT_EQ(Fault(Sample("E12") + "\n" + Sample("E09") + "\n"),
              ":2: E09 stands behind E12: the types of a file come in rising order");
    EXPECT_EQ(Fault(std::string(1025, 'E')), ":1: the line is longer than any record");
    EXPECT_EQ(Fault(std::string(200000, 'E')), ":1: the line is longer than any record");
}

TEST_F(RecordReaderTest, AFileThatCannotBeReadIsSaid)
{
    EXPECT_THROW(RecordReader{folder.File("none")}, Unusable);
    RecordReader reader(folder.File("."));
    Record record;
    EXPECT_THROW(static_cast<void>(reader.Next(record)), Unusable);
}

TEST_F(RecordReaderTest, GoesBackToARecord)
{
    std::string content;
    for (int i = 0; i < 1000; ++i) {
        content += Sample("E14") + "\r\n";
    }
    content += Sample("E15") + "\r\n";
    folder.Write("f.txt", content);
    RecordReader reader(Path());
    Record record;
    std::vector<std::int64_t> offsets;
    while (reader.Next(record)) {
        offsets.push_back(reader.Offset());
    }
    EXPECT_EQ(offsets[1], 193);
    for (const std::size_t at : {std::size_t{1000}, std::size_t{0}, std::size_t{999}}) {
        reader.SeekTo(offsets[at], static_cast<std::int64_t>(at) + 1);
        ASSERT_TRUE(reader.Next(record));
        EXPECT_EQ(record.Number(), static_cast<std::int64_t>(at) + 1);
        EXPECT_EQ(record.Type(), at == 1000 ? "E15" : "E14");
    }
}

TEST_F(RecordReaderTest, TextsAndIntegersOfARecord)
{
    const Record record(*FindLeiaute("E21"),
                        "E21BN0100240300000017   MODELO              01000012000007000000DINHEIRO"
                        "       0000000123456N0000000000000",
                        1);
    EXPECT_EQ(record.Text("meio"), "DINHEIRO");
    EXPECT_EQ(record.Text("letra_adicional"), "");
    EXPECT_EQ(record.Integer("valor"), 123456);
    EXPECT_EQ(record.Raw("coo"), "000012");
    EXPECT_EQ(record.KeyText(), "01000012");
    const Record gt(*FindLeiaute("E11"), Sample("E11").replace(104, 18, "999999999999999999"), 1);
    EXPECT_EQ(gt.Integer("gt"), 999999999999999999);
}

} // namespace
} // namespace bancada::arquivo
