#include "bancada/log/RejectionMessage.h"

#include <charconv>

namespace bancada
{
namespace
{

constexpr std::string_view HEAD = "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'";
constexpr std::string_view MIDDLE = "', Erro:'";
constexpr std::string_view TAIL = "'";

} // namespace

bool IsRejectionMessage(std::string_view text)
{
    int command = 0;
    std::string error;
    return ParseRejectionMessage(text, command, error);
}

bool ParseRejectionMessage(std::string_view text, int& command, std::string& error)
{
    if (text.substr(0, HEAD.size()) != HEAD) {
        return false;
    }
    text.remove_prefix(HEAD.size());

    int code = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), code);
    if (failure != std::errc()) {
        return false;
    }
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));

    // The error text may hold quotes of its own: it ends with the last one.
    if (text.substr(0, MIDDLE.size()) != MIDDLE) {
        return false;
    }
    text.remove_prefix(MIDDLE.size());
    if (text.empty() || text.substr(text.size() - TAIL.size()) != TAIL) {
        return false;
    }
    text.remove_suffix(TAIL.size());

    command = code;
    error = text;
    return true;
}

} // namespace bancada
