#include "bancada/log/Losses.h"

#include "bancada/log/FirmwareLogReader.h"
#include "bancada/log/RejectionMessage.h"

#include <string_view>
#include <utility>

namespace bancada
{
namespace
{

constexpr std::string_view LOST_COMMAND = "LogDatabase: the rows of this command are lost: ";

} // namespace

Losses ReadLosses(const std::string& path)
{
    FirmwareLogReader reader(path);
    Losses losses;
    FirmwareLogRecord record;
    bool statementFollows = false;
    while (reader.Next(record)) {
        RejectedStatement rejected;
        if (ParseRejectionMessage(record.text, rejected.command, rejected.error)) {
            rejected.line = record.line;
            rejected.time = record.time;
            losses.rejected.push_back(std::move(rejected));
            statementFollows = true;
        } else if (record.text.compare(0, LOST_COMMAND.size(), LOST_COMMAND) == 0) {
            // No statement begins so: that of a rejection just before it is missing.
            losses.lost.push_back(
                {record.line, record.time, record.text.substr(LOST_COMMAND.size())});
            statementFollows = false;
        } else if (statementFollows) {
            losses.rejected.back().statement = std::move(record.text);
            statementFollows = false;
        }
    }
    return losses;
}

} // namespace bancada
