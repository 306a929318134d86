// Reads a legal audit file, record by record.
#pragma once

#include "bancada/arquivo/Record.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bancada::arquivo
{

// Lines ended by CR LF or by LF, the last one with or without; types in rising order. A record of
// the common fields alone says that its type has no data: it is passed over, as a type that is left
// out. Holds one line at a time.
class RecordReader
{
  public:
    // Throws Unusable if the file cannot be opened.
    explicit RecordReader(std::string path);
    ~RecordReader();
    RecordReader(const RecordReader&) = delete;
    RecordReader& operator=(const RecordReader&) = delete;

    // Reads the next record; false at the end, and `record` is as it was. Throws Unusable with the
    // file, the line, the record's type, the field and its positions for what is no record, and for
    // a file that cannot be read.
    [[nodiscard]] bool Next(Record& record);

    // Where the record that was read last begins, for SeekTo.
    std::int64_t Offset() const { return m_recordOffset; }
    // Goes on at the record that begins there, which is line `number`, whatever its type.
    void SeekTo(std::int64_t offset, std::int64_t number);

    // Throws Unusable with the file, the record's line and type, the field, its positions and what
    // they hold.
    [[noreturn]] void Fail(const Record& record, const char* field, const std::string& what) const;

    const std::string& Path() const { return m_path; }

  private:
    bool ReadLine(std::string& line);
    bool FillBuffer();
    [[noreturn]] void Fail(const std::string& what) const;

    std::string m_path;
    int m_file = -1;
    std::vector<char> m_buffer;
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    std::int64_t m_bufferOffset = 0; // of the buffer's first byte
    std::int64_t m_recordOffset = 0;
    std::int64_t m_number = 0;
    std::string m_type; // of the record before
};

} // namespace bancada::arquivo
