// The digital signature of a closed document, as the bench makes it.
#pragma once

#include "bancada/registro/Memoria.h"

#include <array>
#include <cstdint>
#include <string>

namespace bancada
{

constexpr int ASSINATURA_BYTES = 32;
constexpr int ASSINATURA_BASE64_LENGTH = 44; // characters, without the terminator

// The content of the document of `memoria.cupom` as one text, the same for the same content and
// different for any other: docs/register.md tells its lines.
std::string CanonicalText(const Memoria& memoria);

// SHA-256 of that text.
std::array<std::uint8_t, ASSINATURA_BYTES> Sign(const Memoria& memoria);

// Base64 (with padding) of the 32 bytes at `assinatura` into `out`, 45 bytes with the terminator.
void WriteBase64(const char* assinatura, char* out);

} // namespace bancada
