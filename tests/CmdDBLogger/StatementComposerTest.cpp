// The forms in which values go into a statement, and a statement that does not fit its array.
#include "CmdDBLogger/StatementComposer.h"
#include "tests/CmdDBLogger/Documento.h"
#include "tests/CmdDBLogger/LoggerTest.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstring>
#include <new>

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A composer whose statement array stands between guard bytes.
template <int sqlSize>
class GuardedComposer : public StatementComposer
{
  public:
    GuardedComposer() : StatementComposer(m_bytes.sql, sqlSize, sizeof m_bytes.after, AUX_SIZE)
    {
        std::memset(m_bytes.before, GUARD, sizeof m_bytes.before);
        std::memset(m_bytes.sql, 'u', sizeof m_bytes.sql);
        std::memset(m_bytes.after, GUARD, sizeof m_bytes.after);
    }
    ~GuardedComposer()
    {
        EXPECT_TRUE(IsAll(GUARD, m_bytes.before, sizeof m_bytes.before));
        EXPECT_TRUE(IsAll(GUARD, m_bytes.after, sizeof m_bytes.after));
    }

    // Whether every byte of the statement array from `from` on is zero.
    bool IsClearFrom(std::size_t from) const
    {
        return IsAll('\0', m_bytes.sql + from, sqlSize - from);
    }

  private:
    static constexpr char GUARD = '\x5A';

    static bool IsAll(char byte, const char* bytes, std::size_t size)
    {
        return std::all_of(bytes, bytes + size, [&](char c) { return c == byte; });
    }

    struct {
        char before[64];
        alignas(ARRAY_ALIGNMENT) char sql[sqlSize];
        char after[64]; // where a logger has its own array
        char work[AUX_SIZE];
    } m_bytes;
};

class Composer : public LoggerTest
{
  protected:
    Composer() { statement.Begin(); }

    GuardedComposer<200> statement;

    // What is composed by one form on its own.
    template <class Form>
    std::string Composed(Form form)
    {
        statement.Begin();
        form(statement);
        EXPECT_EQ(statement.Length(), static_cast<int>(std::strlen(statement.Sql())));
        return statement.Sql();
    }

    std::string IntegerText(int value)
    {
        return Composed([&](StatementComposer& s) { s.Integer("%d", value); });
    }
    std::string MoneyTextOf(const Financial& value)
    {
        return Composed([&](StatementComposer& s) { s.MoneyText("%s,", value); });
    }
    std::string PercentTextOf(const BigInt& hundredths)
    {
        return Composed([&](StatementComposer& s) { s.PercentText("%.2f", hundredths); });
    }
    std::string TaxCodeOf(int number, int rate)
    {
        return Composed(
            [&](StatementComposer& s) { s.TaxCode("'%02dT%02d.%02d',", number, rate); });
    }
    std::string DateTimeTextOf(RtcAbsoluteTime instant)
    {
        return Composed([&](StatementComposer& s) { s.DateTimeText("'%s',", instant); });
    }
};

// Values one below, at and above each power of ten and of two, with both signs.
std::vector<int> BoundaryIntegers()
{
    std::vector<int> values = {INT_MIN, INT_MIN + 1, INT_MAX - 1, INT_MAX, 0};
    const auto around = [&](int power) {
        for (const int value : {power - 1, power, power + 1}) {
            values.push_back(value);
            values.push_back(-value);
        }
    };
    for (int power = 1; power <= 1000000000 / 10; power *= 10) {
        around(power * 10);
    }
    for (int bit = 0; bit <= 30; ++bit) {
        around(static_cast<int>(1u << bit));
    }
    return values;
}

Financial TenThousandths(UINT32 word0, UINT32 word1, UINT32 word2)
{
    Financial value;
    value.nr.number[0] = word0;
    value.nr.number[1] = word1;
    value.nr.number[2] = word2;
    return value;
}

TEST_F(Composer, BeginStartsWithItsHead)
{
    statement.Begin("UPDATE cupom_nf SET ");
    EXPECT_STREQ(statement.Sql(), "UPDATE cupom_nf SET ");
    EXPECT_EQ(statement.Length(), 20);
}

TEST_F(Composer, BeginClearsTheWholeArray)
{
    EXPECT_TRUE(statement.IsClearFrom(0));

    statement.TextAt("%s", std::string(150, 'a').c_str());
    statement.Begin("abc");

    EXPECT_STREQ(statement.Sql(), "abc");
    EXPECT_TRUE(statement.IsClearFrom(3));
}

template <int sqlSize>
void ExpectBeginClears()
{
    GuardedComposer<sqlSize> composer;
    composer.Begin();
    EXPECT_TRUE(composer.IsClearFrom(0)) << sqlSize;
}

TEST_F(Composer, BeginClearsArraysOfAnySizeAndNothingElse)
{
    ExpectBeginClears<1>();
    ExpectBeginClears<2>();
    ExpectBeginClears<3>();
    ExpectBeginClears<4>();
    ExpectBeginClears<5>();
    ExpectBeginClears<50>();
    ExpectBeginClears<SQL_SIZE_DATA_FINAL>();
    ExpectBeginClears<SQL_SIZE>();
    ExpectBeginClears<SQL_SIZE_CUPOM - 1>();
    ExpectBeginClears<SQL_SIZE_CUPOM>();
}

TEST_F(Composer, PiecesFollowOneAnother)
{
    statement.Begin("INSERT INTO moeda (num_ecf) VALUES (");
    statement.Integer("%d,", 1);
    statement.Piece("'V',");
    statement.Piece("");
    statement.Piece("0)");
    EXPECT_STREQ(statement.Sql(), "INSERT INTO moeda (num_ecf) VALUES (1,'V',0)");
}

TEST_F(Composer, IntegerStandsWhereItsPatternHasIt)
{
    EXPECT_EQ(Composed([](StatementComposer& s) { s.Integer("%d,", 12); }), "12,");
    EXPECT_EQ(Composed([](StatementComposer& s) { s.Integer(" WHERE cont_coo = %d", 12); }),
              " WHERE cont_coo = 12");
    EXPECT_EQ(Composed([](StatementComposer& s) { s.Integer("where cont_coo = '%d'", 12); }),
              "where cont_coo = '12'");
}

TEST_F(Composer, ExtremeIntegers)
{
    EXPECT_EQ(IntegerText(0), "0");
    EXPECT_EQ(IntegerText(-1), "-1");
    EXPECT_EQ(IntegerText(2147483647), "2147483647");
    EXPECT_EQ(IntegerText(-2147483647 - 1), "-2147483648");
}

TEST_F(Composer, IntegersAreWrittenAsPrintfWritesThem)
{
    for (const int value : BoundaryIntegers()) {
        char expected[20];
        std::snprintf(expected, sizeof expected, "%d", value);
        EXPECT_EQ(IntegerText(value), expected);
    }
}

TEST_F(Composer, TextStandsBetweenItsQuotesAsItIs)
{
    const char text[20] = "D'Oeste \"%s\" \\n";
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.Text("'%s',", text); }),
              "'D'Oeste \"%s\" \\n',");
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.TextAt("'%s')", text); }),
              "'D'Oeste \"%s\" \\n')");
}

TEST_F(Composer, EmptyAndMissingTextsStandAsNothingBetweenQuotes)
{
    const char empty[4] = "";
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.Text("'%s',", empty); }), "'',");
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.TextAt("'%s',", empty); }), "'',");
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.TextAt("'%s',", nullptr); }), "'',");
}

TEST_F(Composer, ArrayWithoutATerminatorEndsTheText)
{
    struct {
        char text[4];
        char behind[4];
    } fields = {{'A', 'B', 'C', 'D'}, {'x', 'x', 'x', '\0'}};
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.Text("'%s',", fields.text); }), "'ABCD',");
}

TEST_F(Composer, TextReplacingChangesTheArrayAndWritesWhatItThenHolds)
{
    char text[12] = "D'Oeste 'A'";
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.TextReplacing("'%s',", text, '\'', ' '); }),
              "'D Oeste  A ',");
    EXPECT_STREQ(text, "D Oeste  A ");
    char empty[4] = "";
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.TextReplacing("'%s',", empty, '\'', ' '); }),
              "'',");
}

TEST_F(Composer, TextReplacingOfAnArrayWithoutATerminatorStaysWithinIt)
{
    struct {
        char text[4];
        char behind[4];
    } fields = {{'A', '\'', 'C', '\''}, {'\'', 'x', 'x', '\0'}};
    EXPECT_EQ(
        Composed([&](StatementComposer& s) { s.TextReplacing("'%s',", fields.text, '\'', ' '); }),
        "'A C ',");
    EXPECT_EQ(fields.behind[0], '\'');
}

// Lengths around those at which short pieces are copied another way.
TEST_F(Composer, PiecesOfEveryShortLengthAreCopiedWhole)
{
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    for (std::size_t length = 0; length <= letters.size(); ++length) {
        const std::string piece = letters.substr(0, length);
        std::string expected = piece;
        expected.append("|'").append(piece).append("'");
        EXPECT_EQ(Composed([&](StatementComposer& s) {
                      s.TextAt("%s", piece.c_str());
                      s.Piece("|");
                      s.TextAt("'%s'", piece.c_str());
                  }),
                  expected);
        EXPECT_TRUE(statement.IsClearFrom(2 * length + 3)) << length;
    }
}

TEST_F(Composer, CharacterStandsBetweenItsQuotes)
{
    EXPECT_EQ(Composed([](StatementComposer& s) { s.Character("'%c',", 'A'); }), "'A',");
    EXPECT_EQ(Composed([](StatementComposer& s) { s.Character("'%c',", '%'); }), "'%',");
}

TEST_F(Composer, CharacterNulEndsItsForm)
{
    EXPECT_EQ(Composed([](StatementComposer& s) {
                  s.Character("'%c',", '\0');
                  s.Piece("'N',");
              }),
              "''N',");
}

TEST_F(Composer, MoneyTextIsBareWithADecimalPoint)
{
    EXPECT_EQ(MoneyTextOf(Financial()), "0.00,");
    EXPECT_EQ(MoneyTextOf(Money("1234.56")), "1234.56,");
    EXPECT_EQ(MoneyTextOf(Money("-1234.56")), "-1234.56,");
    EXPECT_EQ(MoneyTextOf(Money("0.05")), "0.05,");
    EXPECT_EQ(MoneyTextOf(Money("-0.05")), "-0.05,");
    EXPECT_EQ(MoneyTextOf(Money("999.99")), "999.99,");
    EXPECT_EQ(MoneyTextOf(Money("1000")), "1000.00,");
    EXPECT_EQ(MoneyTextOf(Money("1234567.89")), "1234567.89,");
}

TEST_F(Composer, MoneyTextCutsWhatLiesBeyondTheCents)
{
    EXPECT_EQ(MoneyTextOf(Money("0.0099")), "0.00,");
    EXPECT_EQ(MoneyTextOf(Money("-0.0099")), "0.00,");
    EXPECT_EQ(MoneyTextOf(Money("1.9999")), "1.99,");
    EXPECT_EQ(MoneyTextOf(Money("-1.9999")), "-1.99,");
}

TEST_F(Composer, MoneyTextOfTheExtremeValues)
{
    EXPECT_EQ(MoneyTextOf(TenThousandths(0xFFFFFFFF, 0xFFFFFFFF, 0x7FFFFFFF)),
              "3961408125713216879677197.51,");
    EXPECT_EQ(MoneyTextOf(TenThousandths(0, 0, 0x80000000)), "-3961408125713216879677197.51,");
    EXPECT_EQ(MoneyTextOf(TenThousandths(0xFFFFFFFF, 0, 0)), "429496.72,");
    EXPECT_EQ(MoneyTextOf(TenThousandths(0, 1, 0)), "429496.72,");
    EXPECT_EQ(MoneyTextOf(TenThousandths(0, 0, 1)), "1844674407370955.16,");
}

TEST_F(Composer, MoneyTextWithThreeDecimals)
{
    EXPECT_EQ(Composed([](StatementComposer& s) {
                  s.MoneyText("%s,", Money("1234.5678"), FIN_STR_1, 3);
              }),
              "1234.567,");
    EXPECT_EQ(Composed([](StatementComposer& s) {
                  s.MoneyText("%s,", Money("1234.5678"), FIN_STR_DEFAULT, 2);
              }),
              "1234.56,");
}

TEST_F(Composer, DecimalTextTurnsItsCommasAndKeepsItsFullStops)
{
    char quantity[20] = "1.234,500";
    EXPECT_EQ(Composed([&](StatementComposer& s) { s.DecimalText("%s,", quantity); }),
              "1.234.500,");
    EXPECT_STREQ(quantity, "1.234.500");
}

TEST_F(Composer, DateTimeTextIsDateBlankTime)
{
    EXPECT_EQ(DateTimeTextOf(RtcAbsoluteTime(0)), "'1970-01-01 00:00:00',");
    EXPECT_EQ(DateTimeTextOf(RtcAbsoluteTime(4294967295u)), "'2106-02-07 06:28:15',");
    EXPECT_EQ(DateTimeTextOf(Instant("2026-03-02 08:15:30")), "'2026-03-02 08:15:30',");
    EXPECT_EQ(DateTimeTextOf(Instant("2026-12-31 23:59:59")), "'2026-12-31 23:59:59',");
    EXPECT_EQ(DateTimeTextOf(Instant("2000-02-29 12:00:00")), "'2000-02-29 12:00:00',");
    EXPECT_EQ(DateTimeTextOf(Instant("2100-02-28 23:59:59")), "'2100-02-28 23:59:59',");
    EXPECT_EQ(DateTimeTextOf(RtcAbsoluteTime(Instant("2100-02-28 23:59:59").s + 1)),
              "'2100-03-01 00:00:00',");
}

TEST_F(Composer, DateTextIsTheDateAlone)
{
    EXPECT_EQ(Composed([](StatementComposer& s) {
                  s.DateText("'%s 00:00:00',", Instant("2026-03-02 08:15:30"));
              }),
              "'2026-03-02 00:00:00',");
}

TEST_F(Composer, PercentTextIsHundredthsWithTwoDecimals)
{
    EXPECT_EQ(PercentTextOf(BigInt(0)), "0.00");
    EXPECT_EQ(PercentTextOf(BigInt(5)), "0.05");
    EXPECT_EQ(PercentTextOf(BigInt(99)), "0.99");
    EXPECT_EQ(PercentTextOf(BigInt(100)), "1.00");
    EXPECT_EQ(PercentTextOf(BigInt(1050)), "10.50");
    EXPECT_EQ(PercentTextOf(BigInt(10000)), "100.00");
}

TEST_F(Composer, PercentTextReadsTheLowestWordUnsigned)
{
    BigInt hundredths;
    hundredths.number[0] = 4294967295u;
    EXPECT_EQ(PercentTextOf(hundredths), "42949672.95");
    hundredths.number[1] = 1;
    hundredths.number[2] = 0x80000000u;
    EXPECT_EQ(PercentTextOf(hundredths), "42949672.95");
    EXPECT_EQ(PercentTextOf(BigInt(-1)), "42949672.95");
}

TEST_F(Composer, PercentagesAreWrittenAsPrintfWritesThem)
{
    for (const int value : BoundaryIntegers()) {
        const UINT32 hundredths = static_cast<UINT32>(value);
        char expected[20];
        std::snprintf(expected, sizeof expected, "%.2f", hundredths / 100.0);
        EXPECT_EQ(PercentTextOf(BigInt(value)), expected);
    }
}

TEST_F(Composer, PercentTextStandsWhereItsPatternHasIt)
{
    EXPECT_EQ(Composed([](StatementComposer& s) {
                  s.PercentText("perc_acrescimo = %.2f, ", BigInt(1050));
              }),
              "perc_acrescimo = 10.50, ");
}

TEST_F(Composer, TaxCodeIsNumberLetterAndRate)
{
    EXPECT_EQ(TaxCodeOf(1, 1800), "'01T18.00',");
    EXPECT_EQ(TaxCodeOf(12, 725), "'12T07.25',");
    EXPECT_EQ(TaxCodeOf(0, 5), "'00T00.05',");
    EXPECT_EQ(Composed([](StatementComposer& s) { s.TaxCode("'%02dS%02d.%02d',", 2, 500); }),
              "'02S05.00',");
}

TEST_F(Composer, TaxCodeOfMoreDigitsIsNotCut)
{
    EXPECT_EQ(TaxCodeOf(100, 10000), "'100T100.00',");
    EXPECT_EQ(TaxCodeOf(2147483647, 2147483647), "'2147483647T21474836.47',");
}

TEST_F(Composer, NegativeTaxCodeIsWrittenAsPrintfWritesIt)
{
    EXPECT_EQ(TaxCodeOf(-1, -1), "'-1T00.-1',");
    EXPECT_EQ(TaxCodeOf(-12, -1234), "'-12T-12.-34',");
    EXPECT_EQ(TaxCodeOf(-2147483647 - 1, -2147483647 - 1), "'-2147483648T-21474836.-48',");
    for (const int value : BoundaryIntegers()) {
        char expected[60];
        std::snprintf(expected, sizeof expected, "'%02dT%02d.%02d',", value, value / 100,
                      value % 100);
        EXPECT_EQ(TaxCodeOf(value, value), expected);
    }
}

// --- Arrays --------------------------------------------------------------------------------------

TEST_F(Composer, ArraysOfAStatementAreClearedWhenItIsMade)
{
    using Made = ::Statement<100, 60, 70>;
    alignas(Made) unsigned char memory[sizeof(Made)];
    std::memset(memory, 0xAA, sizeof memory);
    volatile unsigned char* dirty = memory; // keeps the fill from being optimised away
    ASSERT_EQ(dirty[sizeof memory - 1], 0xAA);

    Made* made = new (memory) Made;

    const auto isClear = [](const char* array, int size) {
        return std::all_of(array, array + size, [](char byte) { return byte == '\0'; });
    };
    EXPECT_TRUE(isClear(made->Sql(), 100));
    EXPECT_TRUE(isClear(made->aux, 60));
    EXPECT_TRUE(isClear(made->aux2, 70));
    EXPECT_EQ(static_cast<const void*>(made->Sql()), static_cast<const void*>(memory));
    made->~Made();
}

TEST_F(Composer, CopyToAuxPutsATextAndWhatFollowsIt)
{
    ::Statement<100, 60> made;
    const char text[8] = "Rua A";
    EXPECT_STREQ(made.CopyToAux(text, ","), "Rua A,");
    EXPECT_STREQ(made.aux, "Rua A,");
    const char empty[8] = "";
    EXPECT_STREQ(made.CopyToAux(empty, ""), "");
}

TEST_F(Composer, CopyToAuxOfAnArrayWithoutATerminatorStaysWithinIt)
{
    ::Statement<100, 60> made;
    struct {
        char text[4];
        char behind[4];
    } fields = {{'A', 'B', 'C', 'D'}, {'x', 'x', 'x', '\0'}};
    EXPECT_STREQ(made.CopyToAux(fields.text, ","), "ABC,");
}

TEST_F(Composer, FormsLeaveAuxAlone)
{
    ::Statement<400> made;
    std::strcpy(made.aux, "kept");
    made.Begin("x");
    made.MoneyText("%s,", Money("1234.56"));
    made.DateTimeText("'%s',", Instant("2026-03-02 08:15:30"));
    made.DateText("'%s',", Instant("2026-03-02 08:15:30"));
    made.PercentText("%.2f", BigInt(5));
    made.TaxCode("'%02dT%02d.%02d',", 1, 1800);
    made.Integer("%d,", 7);
    EXPECT_STREQ(made.aux, "kept");
}

TEST_F(Composer, TextThatFillsItsWorkArrayIsExecutedWhole)
{
    ::Statement<SQL_SIZE> made;
    std::memset(made.aux, 'n', AUX_SIZE - 1);
    Documento command = NewCommand<Documento>();

    made.Begin("INSERT INTO totalizador_nao_fiscal (num_indice, descricao) VALUES (");
    made.Integer("%d,", 1);
    made.Text("'%s')", made.aux);
    EXPECT_EQ(made.Execute(command, db), TRUE);

    EXPECT_THAT(Rows("SELECT descricao FROM totalizador_nao_fiscal"),
                ElementsAre(std::string(499, 'n')));
}

// --- A statement and the size of its array -------------------------------------------------------

// How many bytes the longest statement of such an array has.
template <class Made>
int LongestIn(const Made&)
{
    int longest = 0;
    for (int length = 1; length <= 10000; ++length) {
        Made made;
        made.TextAt("%s", std::string(static_cast<std::size_t>(length), 'a').c_str());
        if (made.Length() == length) {
            longest = length;
        }
    }
    return longest;
}

TEST(StatementArrays, AreOfTheRequiredSizes)
{
    EXPECT_EQ(LongestIn(::Statement<SQL_SIZE>()), 4999);
    EXPECT_EQ(LongestIn(::Statement<SQL_SIZE_CUPOM>()), 7999);
    EXPECT_EQ(LongestIn(::Statement<SQL_SIZE_DATA_FINAL>()), 499);
    EXPECT_EQ(sizeof ::Statement<SQL_SIZE>().aux, 500u);
    EXPECT_EQ(sizeof ::Statement<SQL_SIZE>().aux2, 500u);
    EXPECT_EQ(AUX_SIZE_FECHAMENTO, 1500);
    EXPECT_EQ(AUX_SIZE_DATA_FINAL, 50);
}

class SmallComposer : public LoggerTest
{
  protected:
    // An array of 20 bytes holds a statement of 19 characters.
    GuardedComposer<20> statement;
    Documento command = NewCommand<Documento>();

    // The second log entry of the statement, which must have overflowed: the text composed so far.
    std::string LoggedWhenTooLong()
    {
        EXPECT_EQ(statement.Execute(command, db), TRUE);
        EXPECT_THAT(Statements(), IsEmpty());
        EXPECT_EQ(LogEntries().size(), 2u);
        if (LogEntries().size() != 2) {
            return "";
        }
        EXPECT_EQ(
            LogEntries()[0],
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'0', Erro:'statement too long'");
        return LogEntries()[1];
    }
};

TEST_F(SmallComposer, PieceThatFillsTheArrayIsExecuted)
{
    statement.Begin("DELETE FROM ");
    statement.Piece("moeda");
    statement.Piece("  ");
    ASSERT_EQ(statement.Length(), 19);

    EXPECT_EQ(statement.Execute(command, db), TRUE);

    EXPECT_THAT(Statements(), ElementsAre("DELETE FROM moeda  "));
    EXPECT_THAT(LogEntries(), IsEmpty());
}

TEST_F(SmallComposer, PieceOneByteOverIsLeftOutWhole)
{
    statement.Begin("DELETE FROM moeda");
    statement.Piece("   ");
    EXPECT_EQ(LoggedWhenTooLong(), "DELETE FROM moeda");
}

TEST_F(SmallComposer, HeadLongerThanTheArrayLeavesNothing)
{
    statement.Begin("DELETE FROM cupom_fis");
    EXPECT_EQ(LoggedWhenTooLong(), "");
}

TEST_F(SmallComposer, EverythingAfterAnOverflowIsLeftOut)
{
    statement.Begin("DELETE FROM moeda");
    statement.Piece("   ");
    statement.Piece(" ");
    statement.Integer("%d,", 1);
    statement.Character("'%c',", 'A');
    statement.MoneyText("%s,", Money("1.00"));
    statement.PercentText("%.2f", BigInt(5));
    statement.TaxCode("'%02dT%02d.%02d',", 1, 1800);
    statement.TextAt("'%s'", "a");
    EXPECT_EQ(LoggedWhenTooLong(), "DELETE FROM moeda");
}

TEST_F(SmallComposer, EmptyPieceInAFullArrayIsNoOverflow)
{
    statement.Begin("DELETE FROM moeda  ");
    statement.Piece("");
    statement.TextAt("%s", "");

    EXPECT_EQ(statement.Execute(command, db), TRUE);

    EXPECT_THAT(Statements(), ElementsAre("DELETE FROM moeda  "));
}

TEST_F(SmallComposer, EachFormThatEndsWithTheArrayFits)
{
    const auto fits = [&](const char* head, auto form, const std::string& text) {
        statement.Begin();
        statement.TextAt("%s", head);
        form();
        EXPECT_EQ(statement.Length(), 19);
        EXPECT_EQ(statement.Sql(), text);
    };
    fits(
        "0123456789abcdefg", [&] { statement.Integer("%d", -1); }, "0123456789abcdefg-1");
    fits(
        "01234567", [&] { statement.Integer("%d", -2147483647 - 1); }, "01234567-2147483648");
    fits(
        "0123456789abcdef", [&] { statement.Character("'%c'", 'A'); }, "0123456789abcdef'A'");
    fits(
        "0123456789abcdef", [&] { statement.TextAt("'%s'", "x"); }, "0123456789abcdef'x'");
    fits(
        "0123456789abcde", [&] { statement.MoneyText("%s", Money("1")); }, "0123456789abcde1.00");
    fits(
        "0123456789abcde", [&] { statement.PercentText("%.2f", BigInt(5)); },
        "0123456789abcde0.05");
    fits(
        "0123456789", [&] { statement.TaxCode("'%02dT%02d%02d'", 1, 1800); },
        "0123456789'01T1800'");
    fits(
        "", [&] { statement.DateTimeText("%s", Instant("2026-03-02 08:15:30")); },
        "2026-03-02 08:15:30");
    fits(
        "012345678", [&] { statement.DateText("%s", Instant("2026-03-02 08:15:30")); },
        "0123456782026-03-02");
}

TEST_F(SmallComposer, EachFormOneByteOverIsLoggedAndNotExecuted)
{
    const auto overflows = [&](const char* head, auto form, const std::string& composed) {
        Forget();
        statement.Begin();
        statement.TextAt("%s", head);
        form();
        EXPECT_EQ(LoggedWhenTooLong(), composed);
    };
    overflows(
        "0123456789abcdefgh", [&] { statement.Integer("%d", -1); }, "0123456789abcdefgh");
    overflows(
        "0123456789abcdefg", [&] { statement.Integer("%d,", -1); }, "0123456789abcdefg-1");
    overflows(
        "012345678", [&] { statement.Integer("%d", -2147483647 - 1); }, "012345678");
    overflows(
        "0123456789abcdefg", [&] { statement.Character("'%c'", 'A'); }, "0123456789abcdefg'A");
    overflows(
        "0123456789abcdefg", [&] { statement.TextAt("'%s'", "xy"); }, "0123456789abcdefg'");
    overflows(
        "0123456789abcdef", [&] { statement.MoneyText("%s", Money("1")); }, "0123456789abcdef");
    overflows(
        "0123456789abcdef", [&] { statement.PercentText("%.2f", BigInt(5)); }, "0123456789abcdef");
    overflows(
        "0123456789a", [&] { statement.TaxCode("'%02dT%02d%02d'", 1, 1800); },
        "0123456789a'01T1800");
    overflows(
        "0", [&] { statement.DateTimeText("%s", Instant("2026-03-02 08:15:30")); }, "0");
    overflows(
        "0123456789", [&] { statement.DateText("%s", Instant("2026-03-02 08:15:30")); },
        "0123456789");
}

TEST_F(SmallComposer, TextLongerThanTheArrayIsLeftOutWhole)
{
    statement.Begin("DELETE ");
    statement.TextAt("'%s'", std::string(100000, 'x').c_str());
    EXPECT_EQ(LoggedWhenTooLong(), "DELETE '");
}

TEST_F(SmallComposer, BeginEndsAnOverflow)
{
    statement.Begin("DELETE FROM cupom_fiscal");
    statement.Begin("DELETE FROM moeda");

    EXPECT_EQ(statement.Execute(command, db), TRUE);

    EXPECT_THAT(Statements(), ElementsAre("DELETE FROM moeda"));
    EXPECT_THAT(LogEntries(), IsEmpty());
    EXPECT_TRUE(statement.IsClearFrom(17));
}

TEST_F(SmallComposer, ExecuteAnswersWhatTheExecutionReports)
{
    RejectNextExecutions(1);
    statement.Begin("DELETE FROM moeda");
    EXPECT_EQ(statement.Execute(command, db), FALSE);
    EXPECT_EQ(statement.Execute(command, db), TRUE);
}

TEST_F(SmallComposer, ExecuteOfARejectedStatementNamesTheCommand)
{
    command.m_eCmdType = CMD_REDUCAO_Z;
    statement.Begin("DELETE FROM nada");

    EXPECT_EQ(statement.Execute(command, db), TRUE);

    EXPECT_THAT(
        LogEntries(),
        ElementsAre(
            "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'21', Erro:'no such table: nada'",
            "DELETE FROM nada"));
}

} // namespace
