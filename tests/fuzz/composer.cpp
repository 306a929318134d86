// The statement composer against a second opinion: forms in any order, of any values, in an array
// that they may fill, beside a std::string that the C library's formatting fills. What fits is
// executed as it stands; what does not is two entries in the firmware log, and never both.
#include "CmdDBLogger/StatementComposer.h"
#include "Interpreter.h"
#include "MfdServices/GravaLog.h"
#include "tests/fuzz/Decimal128.h"
#include "tests/fuzz/Hold.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fuzzer/FuzzedDataProvider.h>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace
{

std::vector<std::string> logged;

struct AnyCommand : Command {
};

constexpr int SIZE = 200;

template <class... Values>
std::string Formatted(const char* format, Values... values)
{
    char text[256];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string Replaced(std::string text, char from, char to)
{
    std::replace(text.begin(), text.end(), from, to);
    return text;
}

std::string InstantOf(UINT32 seconds, const char* format)
{
    const std::time_t time = seconds;
    std::tm parts = {};
    gmtime_r(&time, &parts);
    char text[64];
    std::strftime(text, sizeof text, format, &parts);
    return text;
}

class Opinions
{
  public:
    explicit Opinions(FuzzedDataProvider& data) : m_data(data) { statement.Begin(); }

    void AppendForm();
    void HoldThatTheyAgree();

  private:
    // An array filled with what the fuzzer has, with or without a terminator.
    template <std::size_t size>
    void Fill(char (&array)[size])
    {
        const std::string text = m_data.ConsumeRandomLengthString(size);
        std::memset(array, 0, size);
        std::memcpy(array, text.data(), text.size());
    }

    template <std::size_t size>
    static std::string TextOf(const char (&array)[size])
    {
        return std::string(array, std::find(array, array + size, '\0'));
    }

    FuzzedDataProvider& m_data;
    Statement<SIZE> statement;
    std::string expected;
};

void Opinions::AppendForm()
{
    char array[24];
    switch (m_data.ConsumeIntegralInRange(0, 12)) {
    case 0:
        statement.Begin("INSERT INTO a VALUES (");
        expected = "INSERT INTO a VALUES (";
        break;
    case 1:
        statement.Piece("0,'V',");
        expected += "0,'V',";
        break;
    case 2: {
        const int value = m_data.ConsumeIntegral<int>();
        statement.Integer("WHERE cont_coo = '%d'", value);
        expected += Formatted("WHERE cont_coo = '%d'", value);
        break;
    }
    case 3:
        Fill(array);
        statement.Text("'%s',", array);
        expected += "'" + TextOf(array) + "',";
        break;
    case 4:
        Fill(array);
        expected += "'" + Replaced(TextOf(array), '\'', ' ') + "',";
        statement.TextReplacing("'%s',", array, '\'', ' ');
        break;
    case 5: {
        const std::string text = m_data.ConsumeRandomLengthString(250);
        const bool none = m_data.ConsumeBool();
        statement.TextAt("%s)", none ? nullptr : text.c_str());
        expected += none ? ")" : std::string(text.c_str()) + ")";
        break;
    }
    case 6: {
        const char character = m_data.ConsumeIntegral<char>();
        statement.Character("'%c',", character);
        expected += character == '\0' ? "'" : std::string("'") + character + "',";
        break;
    }
    case 7: {
        BigInt value;
        for (UINT32& word : value.number) {
            word = m_data.ConsumeIntegral<UINT32>();
        }
        const bool three = m_data.ConsumeBool();
        if (three) {
            statement.MoneyText("%s,", value, FIN_STR_1, 3);
        } else {
            statement.MoneyText("%s,", value);
        }
        expected += MoneyOf(WideOf(value), three ? 3 : 2, false, ".") + ",";
        break;
    }
    case 8: {
        std::string text = m_data.ConsumeRandomLengthString(40).c_str();
        expected += Replaced(text, ',', '.') + ",";
        statement.DecimalText("%s,", text.data());
        break;
    }
    case 9: {
        const UINT32 seconds = m_data.ConsumeIntegral<UINT32>();
        statement.DateTimeText("'%s',", RtcAbsoluteTime(seconds));
        expected += "'" + InstantOf(seconds, "%Y-%m-%d %H:%M:%S") + "',";
        break;
    }
    case 10: {
        const UINT32 seconds = m_data.ConsumeIntegral<UINT32>();
        statement.DateText("'%s", RtcAbsoluteTime(seconds));
        expected += "'" + InstantOf(seconds, "%Y-%m-%d");
        break;
    }
    case 11: {
        BigInt value;
        value.number[0] = m_data.ConsumeIntegral<UINT32>();
        statement.PercentText("perc_desconto = %.2f, ", value);
        expected += Formatted("perc_desconto = %.2f, ", value.number[0] / 100.0);
        break;
    }
    default: {
        const int number = m_data.ConsumeIntegral<int>();
        const int rate = m_data.ConsumeIntegral<int>();
        statement.TaxCode("'%02dT%02d.%02d',", number, rate);
        expected += Formatted("'%02dT%02d.%02d',", number, rate / 100, rate % 100);
        break;
    }
    }
}

void Opinions::HoldThatTheyAgree()
{
    static sqlite3* const db = [] {
        sqlite3* opened = nullptr;
        Hold(sqlite3_open(":memory:", &opened) == SQLITE_OK);
        return opened;
    }();
    logged.clear();
    AnyCommand command;
    statement.Execute(command, db);

    const std::string composed = statement.Sql();
    Hold(static_cast<std::size_t>(statement.Length()) == composed.size());
    Hold(logged.empty() || (logged.size() == 2 && logged[1] == composed));
    const bool tooLong = !logged.empty() && logged[0] == "DBLoggerExecuteSQL: Erro executando SQL "
                                                         "Code. Comando:'0', Erro:'statement too "
                                                         "long'";
    // A NUL within a text ends it for both; nothing else is cut.
    Hold(tooLong == (expected.size() >= SIZE));
    Hold(tooLong ? expected.compare(0, composed.size(), composed) == 0 : expected == composed);
}

} // namespace

void Vindral_GravaLog(char* text)
{
    logged.emplace_back(text);
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t size)
{
    FuzzedDataProvider data(bytes, size);
    Opinions opinions(data);
    while (data.remaining_bytes() > 0) {
        opinions.AppendForm();
    }
    opinions.HoldThatTheyAgree();
    return 0;
}
