#include "host/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>

namespace quantiverse::host {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// What Windows-1252 has at 0x80 to 0x9F, where it isn't Latin-1.
constexpr char16_t kWindows1252[] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
static_assert(std::size(kWindows1252) == 0x20);

void append_utf8(std::string& out, char32_t c) {
  const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6);
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

// Takes one character off the front of `text`, which is not empty.
char32_t take_utf8(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text.front());
  if (first < 0x80) {
    text.remove_prefix(1);
    return first;
  }
  const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  char32_t c = first & (0x7FU >> length);
  for (const char next : text.substr(1, length - 1)) {
    c = c << 6 | (static_cast<unsigned char>(next) & 0x3F);
  }
  text.remove_prefix(std::min(length, text.size()));
  return c;
}

char narrow_character(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
  const auto* const found = std::find(std::begin(kWindows1252), std::end(kWindows1252), c);
  if (found == std::end(kWindows1252)) return '?';
  return static_cast<char>(0x80 + (found - std::begin(kWindows1252)));
}

// Nearly all texts are ASCII, and have a quick way.
bool is_ascii(auto text) {
  return std::all_of(text.begin(), text.end(), [](auto c) { return (c & ~0x7F) == 0; });
}

// The characters of `c`, which are one or two.
void encode_character(char32_t c, auto put, char16_t) {
  if (c < 0x10000) return put(static_cast<char16_t>(c));
  put(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
  put(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
}

void encode_character(char32_t c, auto put, char) {
  put(narrow_character(c));
  // Windows takes a pair of surrogates for two characters that the code page lacks.
  if (c >= 0x10000) put('?');
}

char upper_character(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

}  // namespace

std::string from_utf16(std::u16string_view text) {
  std::string out;
  from_utf16(text, out);
  return out;
}

void from_utf16(std::u16string_view text, std::string& out) {
  out.resize(text.size());
  // Most are ASCII and done after this.
  char16_t all_bits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    out[i] = static_cast<char>(text[i]);
    all_bits |= text[i];
  }
  if (all_bits < 0x80) return;
  out.clear();
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    if (c < 0x80) {
      out += static_cast<char>(c);
      continue;
    }
    const bool is_high = (c & 0xFC00) == 0xD800;
    const bool is_low = (c & 0xFC00) == 0xDC00;
    if (is_high && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00) {
      append_utf8(out, 0x10000 + ((c & 0x3FFU) << 10) + (text[++i] & 0x3FFU));
    } else {
      append_utf8(out, is_high || is_low ? kReplacement : c);
    }
  }
}

std::string from_windows_1252(std::string_view text) {
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    append_utf8(out, byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte);
  }
  return out;
}

std::size_t encoded_size(std::string_view text) {
  if (is_ascii(text)) return text.size();
  std::size_t size = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool goes_on = (byte & 0xC0) == 0x80;
    size += goes_on ? 0 : byte < 0xF0 ? 1 : 2;
  }
  return size;
}

template <class Char>
void encode(std::string_view text, std::span<Char> to) {
  // Any character but those of ASCII has more bytes than it becomes characters.
  if (to.size() == text.size()) {
    std::copy(text.begin(), text.end(), to.begin());
    return;
  }
  std::size_t count = 0;
  const auto put = [&](Char c) {
    if (count < to.size()) to[count++] = c;
  };
  while (count < to.size() && !text.empty()) encode_character(take_utf8(text), put, Char());
}

template void encode(std::string_view, std::span<char>);
template void encode(std::string_view, std::span<char16_t>);

std::string upper_case(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(), upper_character);
  return out;
}

bool equal_ignoring_case(std::string_view a, std::string_view b) {
  if (a == b) return true;
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return upper_character(x) == upper_character(y); });
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n\v\f";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string number_text(double number) {
  if (std::isnan(number)) return "nan";
  if (std::isinf(number)) return number < 0.0 ? "-inf" : "inf";
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.15G", number);
  if (parse_number(buffer) != number) std::snprintf(buffer, sizeof buffer, "%.17G", number);
  return buffer;
}

std::optional<double> parse_number(std::string_view text) {
  text = trimmed(text);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double number = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace quantiverse::host
