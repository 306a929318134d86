#include "bancada/log/FirmwareLogReader.h"

#include "bancada/ForeignTexts.h"
#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/log/LogText.h"

#include <cerrno>
#include <string_view>
#include <utility>

namespace bancada
{
namespace
{

constexpr std::string_view TIME_FORM = "9999-99-99 99:99:99";

bool IsTime(std::string_view text)
{
    if (text.size() != TIME_FORM.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool digit = text[i] >= '0' && text[i] <= '9';
        if (TIME_FORM[i] == '9' ? !digit : text[i] != TIME_FORM[i]) {
            return false;
        }
    }
    return true;
}

bool ParseRecord(std::string_view line, FirmwareLogRecord& record)
{
    const std::size_t tab = TIME_FORM.size();
    if (line.size() <= tab || line[tab] != '\t' || !IsTime(line.substr(0, tab))) {
        return false;
    }
    std::string text;
    if (!Unescape(line.substr(tab + 1), text)) {
        return false;
    }
    record.time = line.substr(0, tab);
    record.text = std::move(text);
    return true;
}

} // namespace

FirmwareLogReader::FirmwareLogReader(const std::string& path)
    : m_path(path), m_file(path, std::ios::binary)
{
    if (!m_file) {
        throw Unusable(Tr("cannot read the firmware log %1: %2", {path, SystemReason(errno)}));
    }
}

bool FirmwareLogReader::Next(FirmwareLogRecord& record)
{
    std::string line;
    while (std::getline(m_file, line)) {
        ++m_line;
        // A last line without its end was cut short.
        if (!m_file.eof() && ParseRecord(line, record)) {
            record.line = m_line;
            return true;
        }
        ++m_damaged;
    }
    if (m_file.bad()) {
        throw Unusable(Tr("cannot read the firmware log %1", {m_path}));
    }
    return false;
}

} // namespace bancada
