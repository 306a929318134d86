#include "bancada/memoria/TextoJson.h"

#include <set>
#include <stdexcept>
#include <vector>

namespace bancada
{

nlohmann::json LeJson(const std::string& texto)
{
    using Json = nlohmann::json;
    std::vector<std::set<std::string>> abertos; // the fields of each object that is being read
    const auto SemRepeticao = [&abertos](int, Json::parse_event_t evento, Json& lido) {
        if (evento == Json::parse_event_t::object_start) {
            abertos.emplace_back();
        } else if (evento == Json::parse_event_t::object_end) {
            abertos.pop_back();
        } else if (evento == Json::parse_event_t::key &&
                   !abertos.back().insert(lido.get<std::string>()).second) {
            throw std::runtime_error("the field \"" + lido.get<std::string>() + "\" comes twice");
        }
        return true;
    };
    try {
        return Json::parse(texto, SemRepeticao);
    } catch (const Json::exception& erro) {
        // The message begins with the name of the exception in brackets.
        const std::string mensagem = erro.what();
        const std::size_t fim = mensagem.find("] ");
        throw std::runtime_error("it is damaged, or not JSON: " +
                                 mensagem.substr(fim == std::string::npos ? 0 : fim + 2));
    }
}

} // namespace bancada
