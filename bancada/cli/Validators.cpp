#include "bancada/cli/Validators.h"

#include "bancada/Messages.h"
#include "bancada/tape/Instant.h"

#include <algorithm>
#include <string>

namespace bancada
{
namespace
{

std::string CheckDate(const std::string& text)
{
    constexpr char FORM[] = "dddd-dd-dd";
    bool fits = text.size() == sizeof FORM - 1;
    for (std::size_t i = 0; fits && i < text.size(); ++i) {
        fits = FORM[i] == 'd' ? text[i] >= '0' && text[i] <= '9' : text[i] == FORM[i];
    }
    if (!fits) {
        return Tr("a date yyyy-mm-dd is due, not %1", {text});
    }
    RtcAbsoluteTime noon;
    return ParseInstant(text + " 12:00:00", noon)
               ? ""
               : Tr("there is no day %1 from 1970-01-01 to 2106-02-06", {text});
}

std::string CheckMoney(std::string& text)
{
    constexpr std::size_t MAX_DIGITS = 13;
    constexpr std::size_t DECIMALS = 2;
    const std::size_t mark = std::min(text.find_first_of(".,"), text.size());
    const std::string whole = text.substr(0, mark);
    std::string decimals = mark < text.size() ? text.substr(mark + 1) : "0";
    const auto isNumber = [](const std::string& digits) {
        return !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
    };
    if (!isNumber(whole) || !isNumber(decimals) || whole.size() > MAX_DIGITS ||
        decimals.size() > DECIMALS) {
        return Tr("an amount such as 12,50 is due, not %1", {text});
    }
    decimals.resize(DECIMALS, '0');
    text = whole + "." + decimals;
    return "";
}

} // namespace

CLI::Validator DateOption()
{
    return CLI::Validator([](std::string& text) { return CheckDate(text); }, "");
}

CLI::Validator MoneyOption()
{
    return CLI::Validator(CheckMoney, "");
}

} // namespace bancada
