// SHA-256 of bytes that come piece by piece.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace bancada
{

class Sha256
{
  public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void Add(std::string_view bytes);

    // The digest of what was added so far, 64 hexadecimal digits. More may be added afterwards.
    std::string Hex() const;

    // Forgets what was added.
    void Reset();

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

// The digest of one text.
std::string Sha256Hex(std::string_view bytes);

} // namespace bancada
