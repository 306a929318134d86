#include "tests/CmdDBLogger/LoggerTest.h"

#include "tests/support/Files.h"

#include <cstdint>
#include <cstdlib>
#include <sqlite3.h>

extern "C" {
int __real_sqlite3_exec(sqlite3* db, const char* sql, int (*callback)(void*, int, char**, char**),
                        void* argument, char** errorText);
int __real_sqlite3_prepare_v2(sqlite3* db, const char* sql, int bytes, sqlite3_stmt** statement,
                              const char** tail);
}

namespace
{

bool IsLeapYear(int year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int DaysOfMonth(int year, int month)
{
    const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : days[month - 1];
}

} // namespace

RtcAbsoluteTime Instant(const std::string& text)
{
    const auto number = [&](std::size_t at, std::size_t digits) {
        return std::atoi(text.substr(at, digits).c_str());
    };
    const int year = number(0, 4);
    const int month = number(5, 2);
    std::uint32_t days = 0;
    for (int past = 1970; past < year; ++past) {
        days += IsLeapYear(past) ? 366 : 365;
    }
    for (int past = 1; past < month; ++past) {
        days += static_cast<std::uint32_t>(DaysOfMonth(year, past));
    }
    days += static_cast<std::uint32_t>(number(8, 2) - 1);
    const int second = number(11, 2) * 3600 + number(14, 2) * 60 + number(17, 2);
    return RtcAbsoluteTime(days * 86400 + static_cast<std::uint32_t>(second));
}

Financial Money(const std::string& text)
{
    const bool negative = text[0] == '-';
    const std::size_t point = text.find('.');
    std::string digits = text.substr(negative ? 1 : 0, point - (negative ? 1 : 0));
    std::string decimals = point == std::string::npos ? "" : text.substr(point + 1);
    decimals.resize(4, '0');
    const std::int64_t size = std::stoll(digits + decimals);
    const std::uint64_t count = static_cast<std::uint64_t>(negative ? -size : size);
    Financial value;
    value.nr.number[0] = static_cast<UINT32>(count);
    value.nr.number[1] = static_cast<UINT32>(count >> 32);
    value.nr.number[2] = negative && size != 0 ? 0xFFFFFFFFu : 0;
    return value;
}

LoggerTest::LoggerTest()
{
    seam = EngineSeam();
    seam.calls = &fiscal.calls;
    EXPECT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
    Execute(test_support::ReadFile(ECF_SOURCE_DIR "/sqlite/schema.sql"));
}

LoggerTest::~LoggerTest()
{
    EXPECT_EQ(OpenQueries(), 0);
    ReleaseOpenQueries();
    EXPECT_EQ(sqlite3_close(db), SQLITE_OK);
    seam = EngineSeam();
}

void LoggerTest::TearDown()
{
    EXPECT_THAT(fiscal.NotAsked(), ::testing::IsEmpty()) << "scripted, and nobody asked for it";
}

std::string LoggerTest::Statement() const
{
    EXPECT_EQ(Statements().size(), 1u) << "expected exactly one statement";
    return Statements().empty() ? "" : Statements().front();
}

std::vector<std::string> LoggerTest::MoneyRequests() const
{
    std::vector<std::string> requests;
    for (const MoneyRequest& asked : seam.money) {
        requests.push_back(std::to_string(asked.size) + "," + std::to_string(asked.style) + "," +
                           std::to_string(asked.decimals) + "," + std::to_string(asked.last));
    }
    return requests;
}

void LoggerTest::Forget()
{
    seam.statements.clear();
    seam.money.clear();
    seam.queries.clear();
    seam.log.clear();
    fiscal.calls.clear();
}

void LoggerTest::RejectNextExecutions(int count, int passed)
{
    ReportNextExecutions(FALSE, count, passed);
}

void LoggerTest::ReportNextExecutions(BOOL result, int count, int passed)
{
    seam.reportedResult = result;
    seam.executionsRejected = count;
    seam.executionsPassed = passed;
}

std::vector<std::string> LoggerTest::Rows(const std::string& query)
{
    sqlite3_stmt* statement = nullptr;
    EXPECT_EQ(__real_sqlite3_prepare_v2(db, query.c_str(), -1, &statement, nullptr), SQLITE_OK)
        << query << ": " << sqlite3_errmsg(db);
    std::vector<std::string> rows;
    while (statement != nullptr && sqlite3_step(statement) == SQLITE_ROW) {
        std::string row;
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            const unsigned char* text = sqlite3_column_text(statement, column);
            row += column == 0 ? "" : "|";
            row += text == nullptr ? "NULL" : reinterpret_cast<const char*>(text);
        }
        rows.push_back(row);
    }
    sqlite3_finalize(statement);
    return rows;
}

void LoggerTest::Execute(const std::string& sql)
{
    EXPECT_EQ(__real_sqlite3_exec(db, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sql << ": " << sqlite3_errmsg(db);
}

void LoggerTest::DropTables()
{
    for (const std::string& table : Rows("SELECT name FROM sqlite_master WHERE type = 'table'")) {
        Execute("DROP TABLE " + table);
    }
}

int LoggerTest::OpenQueries() const
{
    int count = 0;
    for (sqlite3_stmt* open = sqlite3_next_stmt(db, nullptr); open != nullptr;
         open = sqlite3_next_stmt(db, open)) {
        ++count;
    }
    return count;
}

void LoggerTest::ReleaseOpenQueries()
{
    while (sqlite3_stmt* open = sqlite3_next_stmt(db, nullptr)) {
        sqlite3_finalize(open);
    }
}
