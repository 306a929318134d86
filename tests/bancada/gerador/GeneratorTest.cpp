// The tape of a grocer's register: the same bytes for the same options.
#include "bancada/gerador/Generator.h"

#include <gmock/gmock.h>

#include <set>
#include <sstream>

namespace bancada
{
namespace
{

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::string Tape(int jornadas, int cupons, std::uint64_t seed)
{
    std::ostringstream tape;
    GenerateTape({jornadas, cupons, seed}, tape);
    return tape.str();
}

// FNV-1a: enough to notice that a byte changed.
std::uint64_t Fingerprint(const std::string& bytes)
{
    std::uint64_t fingerprint = 14695981039346656037U;
    for (const char c : bytes) {
        fingerprint = (fingerprint ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    return fingerprint;
}

TEST(GeradorGenerator, TheSameSeedGivesTheSameBytesEverywhere)
{
    const std::string tape = Tape(3, 100, 7);
    EXPECT_EQ(tape.size(), 383163U);
    EXPECT_EQ(Fingerprint(tape), 4992357292774030287U);
    EXPECT_EQ(Tape(3, 100, 7), tape);
}

TEST(GeradorGenerator, TheFirstReceiptOfSeedSeven)
{
    EXPECT_THAT(Tape(1, 100, 7), HasSubstr(R"(
{"cmd":"sangria","operacao":"fundo_troco","valor":"150.00"}
{"cmd":"abre_cupom","em":"2024-01-01 06:28:32"}
{"cmd":"vende_item","codigo":"109","descricao":"LARANJA PERA","quantidade":"1.334","unidade":"KG","valor_unitario":"4.29","tributacao":"I","indice":1,"arredonda":true}
)"));
}

TEST(GeradorGenerator, AnotherSeedGivesAnotherTape)
{
    std::set<std::uint64_t> fingerprints;
    for (std::uint64_t seed = 1; seed <= 20; ++seed) {
        fingerprints.insert(Fingerprint(Tape(1, 10, seed)));
    }
    EXPECT_EQ(fingerprints.size(), 20U);
}

TEST(GeradorGenerator, TheFirstDaysDoNotDependOnHowManyFollow)
{
    EXPECT_THAT(Tape(4, 20, 5), StartsWith(Tape(2, 20, 5)));
}

TEST(GeradorGenerator, AStreamThatFailsEndsTheTape)
{
    std::ostringstream tape;
    tape.setstate(std::ios::badbit);
    GenerateTape({MAX_JORNADAS, MAX_CUPONS_POR_JORNADA, 1}, tape);
    EXPECT_THAT(tape.str(), IsEmpty());
}

} // namespace
} // namespace bancada
