#include "libs/CharTools.h"

void CharRemove(char* text, char c)
{
    char* kept = text;
    for (; *text != '\0'; ++text) {
        if (*text != c) {
            *kept++ = *text;
        }
    }
    *kept = '\0';
}

void CharReplace(char* text, char from, char to)
{
    for (; *text != '\0'; ++text) {
        if (*text == from) {
            *text = to;
        }
    }
}
