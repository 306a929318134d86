// Plain reading, beside which audit_file.py counts what the commands of the legal audit file take:
//   bench_plain lines FILE   the lines of a file, one held at a time
//   bench_plain rows DB      every column of every row of every table, as the engine gives them
// Prints how many lines or rows there were, and a sum over what was read.
#include <cstdint>
#include <fstream>
#include <iostream>
#include <numeric>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace
{

struct Reading {
    std::int64_t count = 0;
    std::int64_t sum = 0;
};

std::int64_t SumOf(const unsigned char* text, int size)
{
    return std::accumulate(text, text + size, std::int64_t{0});
}

bool ReadLines(const char* path, Reading& reading)
{
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);) {
        ++reading.count;
        reading.sum += SumOf(reinterpret_cast<const unsigned char*>(line.data()),
                             static_cast<int>(line.size()));
    }
    return file.eof();
}

template <typename Each>
bool EachRow(sqlite3* db, const std::string& sql, Each each)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(db, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
        return false;
    }
    int result = sqlite3_step(statement);
    for (; result == SQLITE_ROW; result = sqlite3_step(statement)) {
        each(statement);
    }
    sqlite3_finalize(statement);
    return result == SQLITE_DONE;
}

bool ReadRows(const char* path, Reading& reading)
{
    sqlite3* db = nullptr;
    bool whole = sqlite3_open_v2(path, &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK;
    std::vector<std::string> tables;
    const auto name = [&tables](sqlite3_stmt* row) {
        tables.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(row, 0)));
    };
    whole = whole && EachRow(db, "SELECT name FROM sqlite_schema WHERE type = 'table'", name);
    for (const std::string& table : tables) {
        const auto columns = [&reading](sqlite3_stmt* row) {
            ++reading.count;
            for (int i = 0; i < sqlite3_column_count(row); ++i) {
                const unsigned char* text = sqlite3_column_text(row, i);
                reading.sum += text == nullptr ? 0 : SumOf(text, sqlite3_column_bytes(row, i));
            }
        };
        whole = whole && EachRow(db, "SELECT * FROM \"" + table + "\"", columns);
    }
    sqlite3_close(db);
    return whole;
}

} // namespace

int main(int argc, char** argv)
{
    const std::string what = argc == 3 ? argv[1] : "";
    Reading reading;
    const bool whole = what == "lines"  ? ReadLines(argv[2], reading)
                       : what == "rows" ? ReadRows(argv[2], reading)
                                        : false;
    if (!whole) {
        std::cerr << "bench_plain lines FILE | rows DB\n";
        return 2;
    }
    std::cout << reading.count << " " << reading.sum << "\n";
    return 0;
}
