// Character clean-up of texts, in place.
#pragma once

#include <cstddef>

// Deletes every occurrence of `c` from `text`, closing the gaps; the order of the rest is kept.
// The text never grows and stays NUL-terminated. REQUIRES: `text` is not null, `c` is not NUL.
void CharRemove(char* text, char c);

// Replaces every occurrence of `from` in `text` by `to`; the length is unchanged.
// REQUIRES: `text` is not null, neither character is NUL.
void CharReplace(char* text, char from, char to);

// The length of the text in an array of `size` bytes: it ends with the array at the latest.
std::size_t CharLength(const char* text, std::size_t size);

// CharReplace for the text in an array of `size` bytes. Answers the text's length.
std::size_t CharReplace(char* text, std::size_t size, char from, char to);
