#include "libs/CharTools.h"

#include <cstring>

void CharRemove(char* text, char c)
{
    // Up to the first of them nothing moves, and mostly there is none.
    char* kept = std::strchr(text, c);
    if (kept == nullptr) {
        return;
    }
    for (const char* at = kept; *at != '\0'; ++at) {
        if (*at != c) {
            *kept++ = *at;
        }
    }
    *kept = '\0';
}

void CharReplace(char* text, char from, char to)
{
    CharReplace(text, std::strlen(text), from, to);
}

// Of the C library's searches memchr is the fastest, on a 32-bit ARM five times as fast as strnlen.
std::size_t CharLength(const char* text, std::size_t size)
{
    const void* const end = std::memchr(text, '\0', size);
    return end == nullptr ? size : static_cast<std::size_t>(static_cast<const char*>(end) - text);
}

std::size_t CharReplace(char* text, std::size_t size, char from, char to)
{
    const std::size_t length = CharLength(text, size);
    char* const end = text + length;
    while (void* const found = std::memchr(text, from, static_cast<std::size_t>(end - text))) {
        text = static_cast<char*>(found);
        *text++ = to;
    }
    return length;
}
