#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// The host keeps texts in UTF-8; add-ins take and give them in UTF-16 or in Windows-1252.
namespace quantiverse::host {

// A surrogate without its other half becomes U+FFFD.
std::string from_utf16(std::u16string_view text);
void from_utf16(std::u16string_view text, std::string& out);  // in place of what it holds
std::string from_windows_1252(std::string_view text);

// How many characters `text` becomes, in UTF-16 and in Windows-1252 alike.
// REQUIRES: it is UTF-8.
std::size_t encoded_size(std::string_view text);
// Fills `to` with the first characters of `text`: UTF-16, or of `char` Windows-1252, where a
// character that the code page lacks becomes "?".
// REQUIRES: `to` is no longer than encoded_size(text).
template <class Char>
void encode(std::string_view text, std::span<Char> to);

// Letters of ASCII only, as they are the only ones in names of functions and menus.
std::string upper_case(std::string_view text);
bool equal_ignoring_case(std::string_view a, std::string_view b);

// Without the blanks around it.
std::string_view trimmed(std::string_view text);

// A number as a cell shows it in full: 15 digits, or 17 where it takes them to read it back.
// Infinities and NaN are "inf", "-inf" and "nan".
std::string number_text(double number);
// The whole text, blanks around it allowed, and finite; nothing otherwise.
std::optional<double> parse_number(std::string_view text);

}  // namespace quantiverse::host
