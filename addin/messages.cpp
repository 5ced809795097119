#include "addin/messages.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "addin/addin_state.h"
#include "addin/host.h"
#include "addin/string_resources.h"

namespace quantiverse {
namespace {

using psl::FormatFault;

constexpr std::uint32_t kHighestPlace = 65535;

// A format as the first pass leaves it: "{{" and "}}" are single braces already, placeholders
// still stand in the text.
template <typename Char>
struct FormatTemplate {
  struct Place {
    std::size_t position;
    std::size_t length;
    std::uint32_t argument;
  };
  std::basic_string<Char> text;
  std::vector<Place> places;
};

template <typename Char>
FormatFault ReadNumber(std::basic_string_view<Char> digits, std::uint32_t& number) {
  if (digits.empty()) return FormatFault::kNotANumber;
  number = 0;
  for (const Char c : digits) {
    if (c < '0' || c > '9') return FormatFault::kNotANumber;
    // Stays one above the highest, however many digits follow.
    number = std::min(number * 10 + static_cast<std::uint32_t>(c - '0'), kHighestPlace + 1);
  }
  return number > kHighestPlace ? FormatFault::kNumberTooLarge : FormatFault::kNone;
}

// Takes the placeholder off the front of `format` to the end of `out`.
template <typename Char>
FormatFault ReadPlace(std::basic_string_view<Char>& format, FormatTemplate<Char>& out) {
  std::size_t end = 1;
  while (end < format.size() && format[end] != '{' && format[end] != '}') ++end;
  if (end == format.size() || format[end] == '{') return FormatFault::kBraces;

  const std::size_t length = end + 1;
  std::uint32_t argument = 0;
  const FormatFault fault = ReadNumber(format.substr(1, end - 1), argument);
  if (fault != FormatFault::kNone) return fault;
  out.places.push_back({out.text.size(), length, argument});
  out.text.append(format.substr(0, length));
  format.remove_prefix(length);
  return FormatFault::kNone;
}

template <typename Char>
FormatFault ReadFormat(std::basic_string_view<Char> format, FormatTemplate<Char>& out) {
  while (!format.empty()) {
    const Char c = format.front();
    const bool brace = c == '{' || c == '}';
    if (brace && format.size() > 1 && format[1] == c) {
      format.remove_prefix(1);
    } else if (c == '}') {
      return FormatFault::kBraces;
    } else if (c == '{') {
      const FormatFault fault = ReadPlace(format, out);
      if (fault != FormatFault::kNone) return fault;
      continue;
    }
    out.text.push_back(c);
    format.remove_prefix(1);
  }
  return FormatFault::kNone;
}

template <typename Char>
std::basic_string<Char> FillTemplate(const FormatTemplate<Char>& format,
                                     std::span<const Char* const> arguments) {
  const auto argument = [arguments](std::uint32_t i) -> std::basic_string_view<Char> {
    if (i >= arguments.size() || arguments[i] == nullptr) return {};
    return arguments[i];
  };
  std::size_t length = format.text.size();
  for (const auto& place : format.places) length += argument(place.argument).size() - place.length;

  std::basic_string<Char> result;
  result.reserve(length);
  std::size_t copied = 0;
  for (const auto& place : format.places) {
    result.append(format.text, copied, place.position - copied).append(argument(place.argument));
    copied = place.position + place.length;
  }
  return result.append(format.text, copied);
}

template <typename Char>
std::basic_string<Char> FormatText(const Char* format, std::span<const Char* const> arguments) {
  if (format == nullptr) throw psl::StringFormatterError(FormatFault::kNoFormat);
  FormatTemplate<Char> read;
  const FormatFault fault = ReadFormat(std::basic_string_view<Char>(format), read);
  if (fault != FormatFault::kNone) throw psl::StringFormatterError(fault);
  return FillTemplate(read, arguments);
}

template <typename Char>
std::basic_string<Char> Widened(std::string_view ascii) {
  return {ascii.begin(), ascii.end()};
}

// Nothing where the built-in text has to serve.
std::optional<std::u16string_view> FindMessage(unsigned number) {
  const StringResources& resources = State().resources;
  return resources.Find(resources.Language(), kMessageResourceBase + number);
}

}  // namespace

std::string FormatV(const char* format, std::span<const char* const> arguments) {
  return FormatText(format, arguments);
}

std::u16string FormatV(const char16_t* format, std::span<const char16_t* const> arguments) {
  return FormatText(format, arguments);
}

bool MessageText(unsigned number, std::string& out) {
  if (number >= kMessageCount) return false;
  const auto resource = FindMessage(number);
  out = resource.has_value() ? NarrowText(*resource) : std::string(BuiltInMessage(number));
  return true;
}

bool MessageText(unsigned number, std::u16string& out) {
  if (number >= kMessageCount) return false;
  const auto resource = FindMessage(number);
  out = resource.has_value() ? std::u16string(*resource) : WideText(BuiltInMessage(number));
  return true;
}

template <typename Char>
std::basic_string<Char> FormatMessageV(unsigned number, std::span<const Char* const> arguments) {
  std::basic_string<Char> format;
  if (MessageText(number, format)) return FormatText(format.c_str(), arguments);
  const auto decimal = Widened<Char>(std::to_string(number));
  return Format(Widened<Char>("Message #{0} not found").c_str(), decimal.c_str());
}

template std::string FormatMessageV(unsigned, std::span<const char* const>);
template std::u16string FormatMessageV(unsigned, std::span<const char16_t* const>);

template <typename Char>
std::basic_string<Char> HexText(std::uint32_t code) {
  std::basic_string<Char> digits;
  do {
    digits.insert(digits.begin(), static_cast<Char>("0123456789ABCDEF"[code % 16]));
    code /= 16;
  } while (code != 0);
  return Widened<Char>("0x") + digits;
}

template std::string HexText(std::uint32_t);
template std::u16string HexText(std::uint32_t);

}  // namespace quantiverse
