// Numbers as the file format writes them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace bancada::recuperacao
{

inline std::uint32_t ByteAt(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]);
}

// Most significant byte first. REQUIRE that the bytes are there.
inline std::uint32_t Read16(std::string_view bytes, std::size_t at)
{
    return ByteAt(bytes, at) << 8U | ByteAt(bytes, at + 1);
}

inline std::uint32_t Read32(std::string_view bytes, std::size_t at)
{
    return Read16(bytes, at) << 16U | Read16(bytes, at + 2);
}

// A number of one to nine bytes, seven bits each, of the ninth all eight. Answers how many bytes it
// takes, or 0 if it ends behind the bytes.
inline std::size_t ReadVarint(std::string_view bytes, std::size_t at, std::uint64_t& value)
{
    constexpr std::size_t LONGEST = 9;
    value = 0;
    for (std::size_t i = 0; i < LONGEST && at + i < bytes.size(); ++i) {
        const std::uint64_t byte = ByteAt(bytes, at + i);
        if (i == LONGEST - 1) {
            value = value << 8U | byte;
            return LONGEST;
        }
        value = value << 7U | (byte & 0x7FU);
        if (byte < 0x80U) {
            return i + 1;
        }
    }
    return 0;
}

} // namespace bancada::recuperacao
