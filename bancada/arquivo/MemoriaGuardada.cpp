#include "bancada/arquivo/MemoriaGuardada.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"
#include "bancada/arquivo/JsonFile.h"

#include <filesystem>

namespace bancada::arquivo
{
namespace
{

using Json = nlohmann::ordered_json;

constexpr std::size_t MAX_DIGITS = 16; // before the point of an amount

const Json& Member(const Json& json, const char* name)
{
    static const Json none = Json::object();
    const auto found = json.find(name);
    return found == json.end() ? none : *found;
}

std::int64_t Number(const Json& json, const char* name)
{
    const auto found = json.find(name);
    return found != json.end() && found->is_number_integer() ? found->get<std::int64_t>() : 0;
}

std::string Text(const Json& json, const char* name)
{
    const auto found = json.find(name);
    return found != json.end() && found->is_string() ? found->get<std::string>() : "";
}

// "12.5" is 1250.
std::int64_t Cents(const std::string& path, const std::string& text)
{
    if (text.empty()) {
        return 0;
    }
    const std::size_t point = text.find('.');
    std::string digits = text.substr(0, point);
    std::string decimals = point == std::string::npos ? "" : text.substr(point + 1);
    const bool wellFormed =
        !digits.empty() && digits.size() <= MAX_DIGITS && decimals.size() <= 2 &&
        (digits + decimals).find_first_not_of("0123456789") == std::string::npos;
    if (!wellFormed) {
        throw Unusable(path + ": registro.gt: " + Tr("an amount is due"));
    }
    decimals.resize(2, '0');
    return std::stoll(digits + decimals);
}

} // namespace

MemoriaGuardada ReadMemoriaGuardada(const std::string& path, std::int64_t number)
{
    std::error_code error;
    if (std::filesystem::exists(std::filesystem::canonical(path, error).string() + ".journal")) {
        throw Unusable(Tr("%1: a run that did not end in good order left its journal beside it: "
                          "the next run with this memory puts both together",
                          {path}));
    }
    const Json json = ReadJsonFile(path);
    if (!json.is_object() || Text(json, "formato") != "ecf-bancada memoria") {
        throw Unusable(Tr("%1: is no memory file", {path}));
    }
    const Json* state = &json;
    if (json.contains("execucao") && Number(json["execucao"], "sequencia") != number) {
        const auto before = json.find("antes");
        if (before == json.end() || !before->contains("execucao") ||
            Number((*before)["execucao"], "sequencia") != number) {
            throw Unusable(Tr("%1: does not belong to the database: it has come to command %2, the "
                              "database to %3",
                              {path, std::to_string(Number(json["execucao"], "sequencia")),
                               std::to_string(number)}));
        }
        state = &*before;
    }
    const Json& registro = Member(*state, "registro");
    MemoriaGuardada memoria;
    for (const auto& entry : Member(registro, "contadores").items()) {
        memoria.contadores[entry.key()] =
            Number(Member(registro, "contadores"), entry.key().c_str());
    }
    memoria.gt = Cents(path, Text(registro, "gt"));
    const Json& totalizadores = Member(Member(registro, "nao_fiscal"), "totalizadores");
    for (const char* numero : {"1", "2"}) {
        memoria.naoFiscais[numero[0] - '0'] = Text(Member(totalizadores, numero), "nome");
    }
    memoria.versaoSb = Text(Member(registro, "ecf"), "versao_sb");
    return memoria;
}

} // namespace bancada::arquivo
