#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace bancada::relatorio
{

// The text's characters, one each. Bytes that are no UTF-8 become U+FFFD one by one, and so do
// control characters and those that reorder a line: a text of the database must not steer a
// terminal or a browser. Line ends and tabs become blanks.
std::u32string caracteres(std::string_view utf8);

std::string utf8(std::u32string_view texto);

// The columns that the text takes on paper: one a character, none for a combining mark.
std::size_t colunas(std::u32string_view texto);
std::size_t colunas(std::string_view texto);

// Lines of at most `largura` columns (at least 1), broken at blanks where there are any; a word
// that is longer than a line is cut. No line begins or ends with a blank. An empty or blank text
// has no lines.
std::vector<std::string> quebra(std::string_view texto, std::size_t largura);

// The first `largura` columns.
std::string corta(std::string_view texto, std::size_t largura);

// Blanks added on the left or on the right up to `largura` columns; a longer text stays as it is.
std::string aDireita(std::string_view texto, std::size_t largura);
std::string aEsquerda(std::string_view texto, std::size_t largura);

// The number with at least `digitos` digits: 000120.
std::string comZeros(long long numero, std::size_t digitos);

// Whether there is anything but blanks: a single blank stands for an empty value in some columns.
bool emBranco(std::string_view texto);

// 11 digits as a CPF (123.456.789-09), 14 as a CNPJ (12.345.678/0001-95), other texts unchanged.
std::string formataCpfCnpj(std::string_view texto);

// "2024-03-15 09:12:44" as 15/03/2024 09:12:44, "2024-03-15" as 15/03/2024; other texts unchanged.
std::string formataDataHora(std::string_view texto);

// The text for HTML, in an element or in a quoted attribute; bytes that are no UTF-8 and controls
// as in `caracteres`.
std::string escapaHtml(std::string_view texto);

} // namespace bancada::relatorio
