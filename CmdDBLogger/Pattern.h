// A piece of required text with the conversions that say where its values go.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstring>

// Never defined: a build with optimization that comes to call it has found a literal that is no
// pattern of its form, and says so while it compiles.
[[gnu::error("this literal lacks its conversion, or has another form's")]] void
PatternDoesNotFitItsForm();

// At most so many bytes stand behind a pattern's first conversion, less than two to this power:
// both lengths of a pattern then mostly fit the short form of an instruction.
constexpr int PATTERN_AFTER_BITS = 4;

// The conversions of the forms, and how often each stands in a pattern.
struct IntegerConversion {
    static constexpr char TEXT[] = "%d";
    static constexpr int TIMES = 1;
};
struct TextConversion {
    static constexpr char TEXT[] = "%s";
    static constexpr int TIMES = 1;
};
struct CharacterConversion {
    static constexpr char TEXT[] = "%c";
    static constexpr int TIMES = 1;
};
struct PercentConversion {
    static constexpr char TEXT[] = "%.2f";
    static constexpr int TIMES = 1;
};
struct TaxCodeConversion {
    static constexpr char TEXT[] = "%02d";
    static constexpr int TIMES = 3;
};

// A literal with the conversion of its form, once or as often as the form has it, and no other '%'.
// It is made by the call that it is written in, and lives as long as the literal, for ever. Where
// its first conversion stands is known when that call is compiled. A build with optimization does
// not compile a literal that does not fit its form (of the tax code's three conversions only where
// the compiler follows them to the end); one without NDEBUG asserts that it fits.
template <class Conversion>
class Pattern
{
  public:
    static constexpr std::size_t WIDTH = sizeof Conversion::TEXT - 1; // bytes of the conversion

    const char* text;
    std::size_t before; // bytes before the first conversion
    std::size_t after;  // bytes behind it

    template <std::size_t literalSize>
    [[gnu::always_inline]] Pattern(const char (&literal)[literalSize])
        : text(literal), before(FirstConversion(literal)), after(literalSize - 1 - before - WIDTH)
    {
        const bool fits = Fits(literal) && after >> PATTERN_AFTER_BITS == 0;
        if (__builtin_constant_p(fits) && !fits) {
            PatternDoesNotFitItsForm();
        }
        assert(fits);
    }

  private:
    [[gnu::always_inline]] static std::size_t FirstConversion(const char* literal)
    {
        const char* const found = std::strchr(literal, '%');
        return found == nullptr ? 0 : static_cast<std::size_t>(found - literal);
    }

    [[gnu::always_inline]] static bool Fits(const char* literal)
    {
        const char* at = literal;
        for (int time = 0; time < Conversion::TIMES; ++time) {
            at = std::strchr(at, '%');
            if (at == nullptr || std::strncmp(at, Conversion::TEXT, WIDTH) != 0) {
                return false;
            }
            at += WIDTH;
        }
        return std::strchr(at, '%') == nullptr;
    }
};

using IntegerPattern = Pattern<IntegerConversion>;
using TextPattern = Pattern<TextConversion>;
using CharacterPattern = Pattern<CharacterConversion>;
using PercentPattern = Pattern<PercentConversion>;
using TaxCodePattern = Pattern<TaxCodeConversion>;
