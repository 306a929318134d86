#include "bancada/memoria/JsonText.h"

#include "bancada/Messages.h"

#include <set>
#include <stdexcept>
#include <vector>

namespace bancada
{

nlohmann::json ParseJson(const std::string& text)
{
    using Json = nlohmann::json;
    std::vector<std::set<std::string>> open; // the fields of each object that is being read
    const auto refuseRepetition = [&open](int, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::object_start) {
            open.emplace_back();
        } else if (event == Json::parse_event_t::object_end) {
            open.pop_back();
        } else if (event == Json::parse_event_t::key &&
                   !open.back().insert(parsed.get<std::string>()).second) {
            throw std::runtime_error(
                Tr("the field \"%1\" comes twice", {parsed.get<std::string>()}));
        }
        return true;
    };
    try {
        return Json::parse(text, refuseRepetition);
    } catch (const Json::exception& error) {
        // The message begins with the name of the exception in brackets.
        const std::string message = error.what();
        const std::size_t end = message.find("] ");
        throw std::runtime_error(Tr("it is damaged, or not JSON: %1",
                                    {message.substr(end == std::string::npos ? 0 : end + 2)}));
    }
}

} // namespace bancada
