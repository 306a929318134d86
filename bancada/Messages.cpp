#include "bancada/Messages.h"

#include "bancada/MessageCatalogue.h"

#include <cctype>
#include <cstdlib>
#include <sstream>
#include <vector>

namespace bancada
{
namespace
{

Language chosen = Language::ENGLISH;

const MessageCatalogue& Portuguese()
{
    static const MessageCatalogue catalogue({CATALOGUE_PT, CATALOGUE_PT_SIZE});
    return catalogue;
}

std::string Fill(std::string_view text, const std::vector<std::string_view>& values)
{
    std::string filled;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t value =
            text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9'
                ? static_cast<std::size_t>(text[i + 1] - '1')
                : values.size();
        if (value < values.size()) {
            filled += values[value];
            ++i;
        } else {
            filled += text[i];
        }
    }
    return filled;
}

std::string_view Environment(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

} // namespace

void SetLanguage(Language language)
{
    chosen = language;
}

Language GetLanguage()
{
    return chosen;
}

bool ParseLanguage(std::string_view code, Language& language)
{
    const std::string_view name = code.substr(0, code.find_first_of("_-.@"));
    if (name != "pt" && name != "en") {
        return false;
    }
    language = name == "pt" ? Language::PORTUGUESE : Language::ENGLISH;
    return true;
}

Language LanguageOfEnvironment()
{
    std::string_view locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = Environment(name);
        if (!locale.empty()) {
            break;
        }
    }
    Language language = Language::ENGLISH;
    if (locale.empty() || locale == "C" || locale == "POSIX") {
        return language;
    }
    std::istringstream languages{std::string(Environment("LANGUAGE"))};
    for (std::string code; std::getline(languages, code, ':');) {
        if (ParseLanguage(code, language)) {
            return language;
        }
    }
    static_cast<void>(ParseLanguage(locale, language));
    return language;
}

TextsForPrograms::TextsForPrograms() : m_before(chosen)
{
    chosen = Language::ENGLISH;
}

TextsForPrograms::~TextsForPrograms()
{
    chosen = m_before;
}

const char* Tr(const char* english)
{
    return chosen == Language::PORTUGUESE ? Portuguese().Find(english, 0) : english;
}

std::string Tr(const char* english, std::initializer_list<std::string_view> values)
{
    return Fill(Tr(english), values);
}

std::string TrCount(const char* one, const char* several, long long number,
                    std::initializer_list<std::string_view> values)
{
    const std::string digits = std::to_string(number);
    std::vector<std::string_view> all{digits};
    all.insert(all.end(), values);
    // The rules of the two languages: English has 0 with the many, Portuguese with the one.
    if (chosen == Language::PORTUGUESE) {
        const bool many = number > 1 || number < -1;
        const char* text = Portuguese().Find(one, many ? 1 : 0);
        return Fill(text == one && many ? several : text, all);
    }
    return Fill(number == 1 ? one : several, all);
}

} // namespace bancada
