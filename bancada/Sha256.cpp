#include "bancada/Sha256.h"

#include <sodium.h>

namespace bancada
{

struct Sha256::State {
    crypto_hash_sha256_state sodium;
};

Sha256::Sha256() : m_state(std::make_unique<State>())
{
    Reset();
}

Sha256::~Sha256() = default;

void Sha256::Add(std::string_view bytes)
{
    crypto_hash_sha256_update(&m_state->sodium,
                              reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

std::string Sha256::Hex() const
{
    State last = *m_state; // ending the digest spoils its state
    unsigned char digest[crypto_hash_sha256_BYTES];
    crypto_hash_sha256_final(&last.sodium, digest);
    char text[2 * sizeof digest + 1];
    return sodium_bin2hex(text, sizeof text, digest, sizeof digest);
}

void Sha256::Reset()
{
    crypto_hash_sha256_init(&m_state->sodium);
}

std::string Sha256Hex(std::string_view bytes)
{
    Sha256 sha;
    sha.Add(bytes);
    return sha.Hex();
}

} // namespace bancada
