// The firmware log.
#pragma once

// Appends the NUL-terminated `text` to the firmware log as one entry. Whoever links the library
// supplies it. It takes texts as long as a whole statement (8,000 bytes), must not keep the pointer
// after it returns (the caller frees the text at once) and must not throw.
void Vindral_GravaLog(char* text);
