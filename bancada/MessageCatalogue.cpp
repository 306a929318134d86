#include "bancada/MessageCatalogue.h"

namespace bancada
{
namespace
{

constexpr std::uint32_t MAGIC = 0x950412de;
constexpr std::uint32_t MAGIC_SWAPPED = 0xde120495;

// The header of the file, in words: where the count and the two tables stand.
constexpr std::size_t HEADER_BYTES = 28;
constexpr std::size_t COUNT_AT = 8;
constexpr std::size_t MESSAGES_AT = 12;
constexpr std::size_t TRANSLATIONS_AT = 16;
// A table's entry: length and place of a text.
constexpr std::uint32_t ENTRY_BYTES = 8;

} // namespace

MessageCatalogue::MessageCatalogue(Bytes bytes) : m_bytes(bytes)
{
    if (m_bytes.size < HEADER_BYTES) {
        return;
    }
    m_swapped = Word(0) == MAGIC_SWAPPED;
    if (Word(0) != MAGIC) {
        return;
    }
    m_messages = Word(MESSAGES_AT);
    m_translations = Word(TRANSLATIONS_AT);
    m_count = Word(COUNT_AT);
}

// 0 where it does not lie within the bytes.
std::uint32_t MessageCatalogue::Word(std::size_t at) const
{
    if (at > m_bytes.size || m_bytes.size - at < 4) {
        return 0;
    }
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        word |= static_cast<std::uint32_t>(m_bytes.data[at + (m_swapped ? 3 - i : i)])
                << (8 * static_cast<unsigned>(i));
    }
    return word;
}

std::string_view MessageCatalogue::Text(std::uint32_t table, std::uint32_t number) const
{
    const std::uint64_t entry = table + std::uint64_t{ENTRY_BYTES} * number;
    if (entry + ENTRY_BYTES > m_bytes.size) {
        return {};
    }
    const std::uint64_t length = Word(static_cast<std::size_t>(entry));
    const std::uint64_t place = Word(static_cast<std::size_t>(entry) + 4);
    if (place + length >= m_bytes.size || m_bytes.data[place + length] != 0) {
        return {};
    }
    return {reinterpret_cast<const char*>(m_bytes.data) + place, static_cast<std::size_t>(length)};
}

const char* MessageCatalogue::Find(const char* message, unsigned form) const
{
    const std::string_view wanted(message);
    std::uint32_t first = 0;
    for (std::uint32_t count = m_count; count > 0;) {
        const std::uint32_t middle = first + count / 2;
        const std::string_view whole = Text(m_messages, middle);
        // Behind a NUL stands the plural.
        const std::string_view found = whole.substr(0, whole.find('\0'));
        if (found < wanted) {
            first = middle + 1;
            count -= count / 2 + 1;
            continue;
        }
        if (found == wanted) {
            std::string_view text = Text(m_translations, middle);
            for (unsigned skipped = 0; skipped < form && !text.empty(); ++skipped) {
                const std::size_t end = text.find('\0');
                text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
            }
            return text.empty() ? message : text.data();
        }
        count /= 2;
    }
    return message;
}

} // namespace bancada
