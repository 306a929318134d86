// Numbers as decimal text, for tests that write their values so.
#pragma once

#include "libs/BigInt.h"
#include "libs/Financial.h"

// Reads an optional '-' and one or more decimal digits, nothing else. Answers false, and leaves
// `out` unchanged, for any other text or a value outside the range.
bool FromText(const char* text, BigInt& out);

// The same with, optionally, a '.' and one to four digits behind it.
bool FromText(const char* text, Financial& out);

// Writes the value in decimal ('-' and digits, no grouping) and answers `out`. At most `size`
// bytes are written, the terminator included: a text that does not fit is written as an empty
// text, and a `size` below 1 writes nothing. BigInt::TEXT_SIZE bytes hold every
// value.
char* ToText(const BigInt& value, char* out, int size);
