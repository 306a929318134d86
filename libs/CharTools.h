// Character clean-up of NUL-terminated texts, in place.
#pragma once

// Deletes every occurrence of `c` from `text`, closing the gaps; the order of the rest is kept.
// The text never grows and stays NUL-terminated. REQUIRES: `text` is not null, `c` is not NUL.
void CharRemove(char* text, char c);

// Replaces every occurrence of `from` in `text` by `to`; the length is unchanged.
// REQUIRES: `text` is not null, neither character is NUL.
void CharReplace(char* text, char from, char to);
