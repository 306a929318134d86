// The language of what people read.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace bancada
{

enum class Language {
    ENGLISH,
    PORTUGUESE
};

// The language of Tr and TrCount from now on. Without a call it is English. To be called by the
// program alone, before the first text is asked for; what programs read (JSON, the firmware log,
// the legal audit file) has no language.
void SetLanguage(Language language);
[[nodiscard]] Language GetLanguage();

// The language of that code ("pt", "pt_BR", "pt_BR.UTF-8", "en"); false, and `language` as it was,
// for one that there is no catalogue of.
[[nodiscard]] bool ParseLanguage(std::string_view code, Language& language);

// As the environment asks, whether the machine has the locale or not: the first that is not empty
// of LC_ALL, LC_MESSAGES and LANG; where that is neither C nor POSIX, the languages of LANGUAGE
// come before it. English where nothing is asked for or known.
[[nodiscard]] Language LanguageOfEnvironment();

// While one lives, texts are English: those that programs read have no other language.
class TextsForPrograms
{
  public:
    TextsForPrograms();
    ~TextsForPrograms();
    TextsForPrograms(const TextsForPrograms&) = delete;
    TextsForPrograms& operator=(const TextsForPrograms&) = delete;

  private:
    Language m_before;
};

// The text in the language chosen, or as it is where the catalogue has none. REQUIRES: a literal,
// by which xgettext finds it; what is answered lives as long as the program.
[[nodiscard]] const char* Tr(const char* english);

// Likewise with %1, %2 ... replaced by the values, each in the place that the language gives it.
[[nodiscard]] std::string Tr(const char* english, std::initializer_list<std::string_view> values);

// Likewise, in the form that goes with `number`; %1 is the number, %2 the first of the values.
[[nodiscard]] std::string TrCount(const char* one, const char* several, long long number,
                                  std::initializer_list<std::string_view> values = {});

// Marks a text that Tr is given later: of a table, say.
constexpr const char* TrLater(const char* english)
{
    return english;
}

} // namespace bancada
