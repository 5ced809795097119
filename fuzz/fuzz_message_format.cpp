// Message formats: both widths agree with a reader of one pass, braces that are doubled come back
// as they were, and a text that was put in stays as it is.
//
// The input is lines: the format, then the arguments.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "addin/messages.h"

namespace {

using quantiverse::FormatV;
using quantiverse::psl::StringFormatterError;

template <typename Char>
using Text = std::basic_string<Char>;
template <typename Char>
using Pointers = std::vector<const Char*>;

// The slow and plain way; nothing for a bad format.
std::optional<std::string> format_plainly(std::string_view format,
                                          const Pointers<char>& arguments) {
  std::string out;
  for (std::size_t i = 0; i < format.size(); ++i) {
    const std::string_view rest = format.substr(i);
    if (rest.front() != '{' && rest.front() != '}') {
      out += rest.front();
    } else if (rest.size() > 1 && rest[1] == rest[0]) {
      out += rest.front();
      ++i;
    } else {
      const std::size_t end = rest.find('}');
      if (rest.front() == '}' || end == std::string_view::npos) return std::nullopt;
      const std::string digits(rest.substr(1, end - 1));
      if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
      }
      const std::size_t first = std::min(digits.find_first_not_of('0'), digits.size());
      if (digits.size() - first > 5) return std::nullopt;
      const unsigned long number = std::strtoul(digits.c_str(), nullptr, 10);
      if (number > 65535) return std::nullopt;
      if (number < arguments.size()) out += arguments[number];
      i += end;
    }
  }
  return out;
}

template <typename Char>
std::optional<Text<Char>> format_caught(const Text<Char>& format, const Pointers<Char>& arguments) {
  try {
    return FormatV(format.c_str(), arguments);
  } catch (const StringFormatterError&) {
    return std::nullopt;
  }
}

template <typename Char>
Pointers<Char> pointers_to(const std::vector<Text<Char>>& texts) {
  Pointers<Char> pointers;
  for (const auto& text : texts) pointers.push_back(text.c_str());
  return pointers;
}

std::string with_braces_doubled(const std::string& text) {
  std::string out;
  for (const char c : text) {
    out += c;
    if (c == '{' || c == '}') out += c;
  }
  return out;
}

std::u16string widened(const std::string& text) { return {text.begin(), text.end()}; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 4096) return 0;  // many places times a long argument is a longer text
  std::vector<std::string> lines(1);
  for (std::size_t i = 0; i < size && data[i] != 0; ++i) {
    if (data[i] == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += static_cast<char>(data[i]);
    }
  }
  const std::string format = lines.front();
  lines.erase(lines.begin());
  std::vector<std::u16string> wide_lines;
  for (const auto& line : lines) wide_lines.push_back(widened(line));

  const auto arguments = pointers_to(lines);
  const auto narrow = format_caught(format, arguments);
  if (narrow != format_plainly(format, arguments)) std::abort();
  const auto wide = format_caught(widened(format), pointers_to(wide_lines));
  if (wide.has_value() != narrow.has_value()) std::abort();
  if (wide.has_value() && *wide != widened(*narrow)) std::abort();
  if (format_caught(with_braces_doubled(format), arguments) != format) std::abort();
  return 0;
}
