#include "bancada/arquivo/Comparacao.h"

#include "bancada/arquivo/Leiautes.h"
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

class ComparacaoTest : public testing::Test
{
  protected:
    // Every difference as a line.
    std::vector<std::string> Differences(const std::string& first, const std::string& second)
    {
        folder.Write("first", first);
        folder.Write("second", second);
        std::vector<std::string> differences;
        summary = Compare(folder.File("first"), folder.File("second"), [&](const Difference& d) {
            std::string line = std::string(NameOf(d.kind)) + " " + d.type + " " + d.key + " " +
                               std::to_string(d.firstLine) + " " + std::to_string(d.secondLine);
            if (d.kind == DifferenceKind::FIELD) {
                line += " " + d.field + " " + std::to_string(d.firstPosition) + "-" +
                        std::to_string(d.lastPosition) + " '" + d.first + "' '" + d.second + "'";
            }
            differences.push_back(line);
        });
        return differences;
    }

    test_support::TempFolder folder;
    ComparisonSummary summary;
};

const std::string PREFIX = "BN0100240300000017  MODELO              ";

std::string E13(const std::string& crz, const std::string& totalizador, int valor)
{
    std::string text = totalizador;
    text.resize(7, ' ');
    std::string digits = std::to_string(valor);
    return "E13" + PREFIX + " 01" + crz + text + std::string(13 - digits.size(), '0') + digits +
           "\n";
}

std::string E16(const std::string& coo, const std::string& simbolo)
{
    return "E16" + PREFIX + " 01" + coo + "0000000000000000000000" + simbolo + "20240301080000\n";
}

std::string E21(const std::string& coo, const std::string& meio, const std::string& valor)
{
    std::string text = meio;
    text.resize(15, ' ');
    return "E21" + PREFIX + " 01" + coo + "000001000000" + text + valor + "N0000000000000\n";
}

TEST_F(ComparacaoTest, AFileIsTheSameAsItself)
{
    std::string content;
    std::string lf;
    for (const SampleRecord& sample : SAMPLES) {
        content += std::string(sample.one) + "\r\n";
        lf += std::string(sample.one) + "\n";
    }
    EXPECT_TRUE(Differences(content, lf).empty()) << "what ends a line makes no difference";
    EXPECT_FALSE(summary.Differs());
    ASSERT_EQ(summary.types.size(), std::size(SAMPLES));
    for (std::size_t i = 0; i < summary.types.size(); ++i) {
        EXPECT_EQ(summary.types[i].type, SAMPLES[i].type);
        EXPECT_EQ(summary.types[i].equal, 1);
        EXPECT_EQ(summary.types[i].first, 1);
        EXPECT_EQ(summary.types[i].second, 1);
    }
}

// Each field of each record by itself: a difference of the key is two records, of any other field
// one difference with its positions.
TEST_F(ComparacaoTest, EveryFieldOfEveryRecordIsCompared)
{
    for (const SampleRecord& sample : SAMPLES) {
        const Leiaute& leiaute = *FindLeiaute(sample.type);
        for (std::size_t i = 2; i < leiaute.fields.size(); ++i) {
            const Field& field = leiaute.fields[i];
            std::string changed = sample.one;
            changed.replace(field.Begin(), field.Size(),
                            std::string(sample.other).substr(field.Begin(), field.Size()));
            ASSERT_NE(changed, sample.one) << sample.type << " " << field.name;
            const std::vector<std::string> found =
                Differences(std::string(sample.one) + "\n", changed + "\n");
            EXPECT_TRUE(summary.Differs());
            if (field.key == Key::YES) {
                ASSERT_EQ(found.size(), 2U) << sample.type << " " << field.name;
                EXPECT_EQ(found[0].substr(0, 11), "only_first ");
                EXPECT_EQ(found[1].substr(0, 12), "only_second ");
            } else {
                ASSERT_EQ(found.size(), 1U) << sample.type << " " << field.name;
                EXPECT_NE(found[0].find(std::string(" 1 1 ") + field.name + " " +
                                        std::to_string(field.first) + "-" +
                                        std::to_string(field.last) + " '"),
                          std::string::npos)
                    << found[0];
            }
        }
    }
}

TEST_F(ComparacaoTest, ADifferenceSaysTheRecordAndBothValues)
{
    EXPECT_EQ(
        Differences(E16("000001", "LX") + E16("000002", "LX"),
                    E16("000001", "LX") + E16("000002", "MF")),
        (std::vector<std::string>{"field E16 usuario 01 coo 000002 2 2 simbolo 75-76 'LX' 'MF'"}));
    ASSERT_EQ(summary.types.size(), 1U);
    EXPECT_EQ(summary.types[0].equal, 1);
    EXPECT_EQ(summary.types[0].different, 1);
}

TEST_F(ComparacaoTest, ARecordOfOneFileAloneShiftsNoOther)
{
    std::string all;
    std::string without;
    for (int coo = 100001; coo < 100101; ++coo) {
        all += E16(std::to_string(coo), "LX");
        if (coo != 100003) {
            without += E16(std::to_string(coo), "LX");
        }
    }
    EXPECT_EQ(Differences(all, without),
              (std::vector<std::string>{"only_first E16 usuario 01 coo 100003 3 0"}));
    EXPECT_EQ(summary.types[0].equal, 99);
    EXPECT_EQ(summary.types[0].onlyFirst, 1);
    EXPECT_EQ(Differences(without, all),
              (std::vector<std::string>{"only_second E16 usuario 01 coo 100003 0 3"}));
    EXPECT_EQ(summary.types[0].onlySecond, 1);
}

TEST_F(ComparacaoTest, TheTotalizersOfAReductionAreASet)
{
    const std::string first =
        E13("000001", "01T1800", 1) + E13("000001", "F1", 2) + E13("000002", "F1", 3);
    EXPECT_TRUE(Differences(first, E13("000001", "F1", 2) + E13("000001", "01T1800", 1) +
                                       E13("000002", "F1", 3))
                    .empty());
    EXPECT_FALSE(Differences(first, E13("000002", "F1", 3) + E13("000001", "01T1800", 1) +
                                        E13("000001", "F1", 2))
                     .empty())
        << "the reductions have their order";
    EXPECT_TRUE(summary.Differs());
}

TEST_F(ComparacaoTest, AnotherPlaceIsADifference)
{
    const std::vector<std::string> found =
        Differences(E16("000001", "LX") + E16("000002", "LX") + E16("000003", "LX"),
                    E16("000002", "LX") + E16("000001", "LX") + E16("000003", "LX"));
    EXPECT_EQ(found, (std::vector<std::string>{"order E16 usuario 01 coo 000001 1 2"}));
    EXPECT_EQ(summary.types[0].equal, 3);
    EXPECT_EQ(summary.types[0].order, 1);
    EXPECT_TRUE(summary.Differs());
}

TEST_F(ComparacaoTest, RecordsOfOneKeyArePairedInTheirOrder)
{
    const std::string cash = E21("000007", "DINHEIRO", "0000000000100");
    const std::string card = E21("000007", "CARTAO", "0000000000200");
    EXPECT_TRUE(Differences(cash + card, cash + card).empty());
    EXPECT_EQ(Differences(cash + card, cash),
              (std::vector<std::string>{"only_first E21 usuario 01 coo 000007 2 0"}));
    EXPECT_EQ(Differences(cash + card, card + cash).size(), 4U) << "two fields of two payments";
}

} // namespace
} // namespace bancada::arquivo
