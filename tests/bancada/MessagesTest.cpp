// The language of what people read.
#include "bancada/Messages.h"
#include "bancada/MessageCatalogue.h"
#include "tests/bancada/InPortuguese.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace bancada;
using bancada_test::InPortuguese;

namespace
{

// An environment of this test's own, given back behind it.
class Environment
{
  public:
    Environment()
    {
        for (const char* name : NAMES) {
            const char* value = std::getenv(name);
            m_had.push_back(value != nullptr);
            m_before.emplace_back(value == nullptr ? "" : value);
            unsetenv(name);
        }
    }
    ~Environment()
    {
        for (std::size_t i = 0; i < m_had.size(); ++i) {
            if (m_had[i]) {
                setenv(NAMES[i], m_before[i].c_str(), 1);
            } else {
                unsetenv(NAMES[i]);
            }
        }
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    Language With(const std::vector<std::pair<const char*, const char*>>& values)
    {
        for (const char* name : NAMES) {
            unsetenv(name);
        }
        for (const auto& [name, value] : values) {
            setenv(name, value, 1);
        }
        return LanguageOfEnvironment();
    }

  private:
    static constexpr const char* NAMES[] = {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"};
    std::vector<bool> m_had;
    std::vector<std::string> m_before;
};

TEST(Messages, ACodeNamesALanguageByItsFirstPart)
{
    for (const char* code : {"pt", "pt_BR", "pt-BR", "pt_PT.UTF-8", "pt@x", "pt.UTF-8"}) {
        Language language = Language::ENGLISH;
        EXPECT_TRUE(ParseLanguage(code, language)) << code;
        EXPECT_EQ(language, Language::PORTUGUESE) << code;
    }
    Language language = Language::PORTUGUESE;
    for (const char* code : {"", "C", "pts", "de_DE", "p", "PT"}) {
        EXPECT_FALSE(ParseLanguage(code, language)) << code;
    }
    EXPECT_EQ(language, Language::PORTUGUESE);
    EXPECT_TRUE(ParseLanguage("en_US.UTF-8", language));
    EXPECT_EQ(language, Language::ENGLISH);
}

TEST(Messages, TheEnvironmentAsksAsForEveryTranslatedProgram)
{
    Environment environment;
    const Language english = Language::ENGLISH;
    const Language portuguese = Language::PORTUGUESE;
    EXPECT_EQ(environment.With({}), english);
    EXPECT_EQ(environment.With({{"LANG", "pt_BR.UTF-8"}}), portuguese);
    EXPECT_EQ(environment.With({{"LANG", "de_DE.UTF-8"}}), english);
    EXPECT_EQ(environment.With({{"LANG", "pt_BR"}, {"LC_MESSAGES", "en_US"}}), english);
    EXPECT_EQ(environment.With({{"LANG", "en_US"}, {"LC_MESSAGES", "pt_BR"}}), portuguese);
    EXPECT_EQ(environment.With({{"LC_MESSAGES", "pt_BR"}, {"LC_ALL", "C"}}), english);
    EXPECT_EQ(environment.With({{"LC_MESSAGES", "en_US"}, {"LC_ALL", "pt_BR"}}), portuguese);
    EXPECT_EQ(environment.With({{"LC_ALL", ""}, {"LANG", "pt_BR"}}), portuguese);
    // LANGUAGE comes first, but not where no language is wanted.
    EXPECT_EQ(environment.With({{"LANG", "en_US"}, {"LANGUAGE", "de:pt:en"}}), portuguese);
    EXPECT_EQ(environment.With({{"LANG", "pt_BR"}, {"LANGUAGE", "en:pt"}}), english);
    EXPECT_EQ(environment.With({{"LANG", "pt_BR"}, {"LANGUAGE", "de:fr"}}), portuguese);
    EXPECT_EQ(environment.With({{"LC_ALL", "C"}, {"LANGUAGE", "pt"}}), english);
    EXPECT_EQ(environment.With({{"LC_ALL", "POSIX"}, {"LANGUAGE", "pt"}}), english);
    EXPECT_EQ(environment.With({{"LANGUAGE", "pt"}}), english);
    EXPECT_EQ(environment.With({{"LC_ALL", "C.UTF-8"}, {"LANGUAGE", "pt"}}), portuguese);
}

TEST(Messages, TextsAreInTheLanguageChosen)
{
    EXPECT_STREQ(Tr("Examples:"), "Examples:");
    const InPortuguese portuguese;
    EXPECT_STREQ(Tr("Examples:"), "Exemplos:");
    EXPECT_EQ(Tr("%1 excludes %2", {"a", "b"}), "a exclui b");
    const std::string unknown = "of which there is no message";
    EXPECT_EQ(Tr(unknown.c_str()), unknown);
}

TEST(Messages, ValuesStandWhereTheTextHasThem)
{
    const std::string text = "%2, 100 %, %1%3 %";
    EXPECT_EQ(Tr(text.c_str(), {"one", "%1"}), "%1, 100 %, one%3 %");
}

TEST(Messages, NumbersChooseTheForm)
{
    const char* one = "%1 thing of %2";
    const char* several = "%1 things of %2";
    EXPECT_EQ(TrCount(one, several, 1, {"x"}), "1 thing of x");
    EXPECT_EQ(TrCount(one, several, 0, {"x"}), "0 things of x");
    EXPECT_EQ(TrCount(one, several, 2, {"x"}), "2 things of x");
    EXPECT_EQ(TrCount(one, several, -1, {"x"}), "-1 things of x");
    EXPECT_EQ(TrCount("%1 %2 %3", several, 1, {"x"}), "1 x %3");
    const InPortuguese portuguese;
    EXPECT_EQ(TrCount(one, several, 1, {"x"}), "1 thing of x");
    EXPECT_EQ(TrCount(one, several, 0, {"x"}), "0 thing of x");
    EXPECT_EQ(TrCount(one, several, 2, {"x"}), "2 things of x");
    EXPECT_EQ(TrCount(one, several, -1, {"x"}), "-1 thing of x");
    EXPECT_EQ(TrCount(one, several, -2, {"x"}), "-2 things of x");
    EXPECT_EQ(TrCount("%1 record", "%1 records", 1), "1 registro");
    EXPECT_EQ(TrCount("%1 record", "%1 records", 2), "2 registros");
}

// A catalogue of two messages, "a" as "AA" and "b", plural "bs", as "B" and "BS".
std::vector<unsigned char> Catalogue(bool swapped)
{
    std::vector<unsigned char> bytes;
    const auto word = [&](std::uint32_t value) {
        for (unsigned i = 0; i < 4; ++i) {
            bytes.push_back(static_cast<unsigned char>(value >> (8 * (swapped ? 3 - i : i))));
        }
    };
    for (const std::uint32_t value :
         {0x950412deU, 0U, 2U, 28U, 44U, 0U, 60U, 1U, 60U, 4U, 62U, 2U, 67U, 4U, 70U}) {
        word(value);
    }
    const std::string texts("a\0b\0bs\0AA\0B\0BS\0", 15);
    bytes.insert(bytes.end(), texts.begin(), texts.end());
    return bytes;
}

TEST(MessageCatalogue, FindsMessagesAndTheirForms)
{
    for (const bool swapped : {false, true}) {
        const std::vector<unsigned char> bytes = Catalogue(swapped);
        const MessageCatalogue catalogue({bytes.data(), bytes.size()});
        EXPECT_EQ(catalogue.Size(), 2U);
        EXPECT_STREQ(catalogue.Find("a", 0), "AA");
        EXPECT_STREQ(catalogue.Find("b", 0), "B");
        EXPECT_STREQ(catalogue.Find("b", 1), "BS");
        for (const char* none : {"", "aa", "bs", "c", "A", "AA", "B", "BS"}) {
            EXPECT_STREQ(catalogue.Find(none, 0), none);
        }
        EXPECT_STREQ(catalogue.Find("a", 1), "a");
        EXPECT_STREQ(catalogue.Find("b", 2), "b");
    }
}

TEST(MessageCatalogue, TheTablesMayStandBehindTheTexts)
{
    std::vector<unsigned char> bytes;
    const auto word = [&](std::uint32_t value) {
        for (unsigned i = 0; i < 4; ++i) {
            bytes.push_back(static_cast<unsigned char>(value >> (8 * i)));
        }
    };
    for (const std::uint32_t value : {0x950412deU, 0U, 1U, 32U, 40U, 0U, 0U}) {
        word(value);
    }
    bytes.insert(bytes.end(), {'a', 0, 'A', 0});
    for (const std::uint32_t value : {1U, 28U, 1U, 30U}) {
        word(value);
    }
    const MessageCatalogue catalogue({bytes.data(), bytes.size()});
    EXPECT_STREQ(catalogue.Find("a", 0), "A");
    EXPECT_STREQ(catalogue.Find("b", 0), "b");
}

TEST(MessageCatalogue, EveryPlaceOfALongOneIsFound)
{
    const InPortuguese portuguese;
    const MessageCatalogue catalogue({CATALOGUE_PT, CATALOGUE_PT_SIZE});
    for (const char* text : {"%1 % of the tape", "\"%1\" does not fit", "Is a directory",
                             "the unit price", "versao_sb has no date", "refused"}) {
        EXPECT_STRNE(catalogue.Find(text, 0), text);
        const std::string behind = std::string(text) + "\x01";
        EXPECT_EQ(catalogue.Find(behind.c_str(), 0), behind);
    }
}

TEST(MessageCatalogue, OneThatIsCutOrChangedIsNeverReadBeyondItsEnd)
{
    const std::vector<unsigned char> whole = Catalogue(false);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::vector<unsigned char> cut(whole.begin(),
                                             whole.begin() + static_cast<std::ptrdiff_t>(size));
        const MessageCatalogue catalogue({cut.data(), cut.size()});
        EXPECT_STREQ(catalogue.Find("b", 1), "b") << size;
    }
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::vector<unsigned char> changed = whole;
        changed[at] = 0xFF;
        const MessageCatalogue catalogue({changed.data(), changed.size()});
        const std::string found = catalogue.Find("b", 1);
        EXPECT_LE(found.size(), 3U) << at;
    }
}

TEST(MessageCatalogue, TheProgramHasOne)
{
    const MessageCatalogue catalogue({CATALOGUE_PT, CATALOGUE_PT_SIZE});
    EXPECT_GT(catalogue.Size(), 100U);
}

} // namespace
