// A compiled catalogue of messages, as msgfmt makes it of a .po file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace bancada
{

// Made in the build, of bancada/po/pt.po.
extern const unsigned char CATALOGUE_PT[];
extern const std::size_t CATALOGUE_PT_SIZE;

class MessageCatalogue
{
  public:
    struct Bytes {
        const unsigned char* data;
        std::size_t size;
    };

    // The bytes of an .mo file of either byte order, which outlive this. One that is none, or is
    // cut, has no messages.
    explicit MessageCatalogue(Bytes bytes);

    // The translation of `message` (of several, the singular), its plural form of that number; or
    // `message` itself where there is none. It lives as long as the bytes.
    [[nodiscard]] const char* Find(const char* message, unsigned form) const;

    [[nodiscard]] std::size_t Size() const { return m_count; }

  private:
    std::uint32_t Word(std::size_t at) const;
    // The text of that number in the table that begins at `table`, a NUL behind it; empty where it
    // does not lie within the bytes.
    std::string_view Text(std::uint32_t table, std::uint32_t number) const;

    Bytes m_bytes;
    bool m_swapped = false;
    std::uint32_t m_count = 0;
    std::uint32_t m_messages = 0;
    std::uint32_t m_translations = 0;
};

} // namespace bancada
