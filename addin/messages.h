#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "addin/message_table.h"

// Texts for the user: numbered messages and the small language of their formats.
//
// A format is text with placeholders {n}, n a decimal number; they may come in any order and
// repeat. "{{" and "}}" stand for single braces. Everything comes in two widths, `char` in the
// system's code page and `char16_t`.
namespace quantiverse {

namespace psl {

// What is wrong with a format.
enum class FormatFault {
  kNone = 0,
  kBraces = -2,          // a "{" without its "}", or a lone "}"
  kNotANumber = -3,      // nothing but decimal digits may stand between braces, and at least one
  kNumberTooLarge = -4,  // above 65535
  kNoFormat = -6,        // a null pointer
};

// A bad format. Not a CXlRuntimeException: it passes through the entry points' handlers, as all
// formats are the add-in's own and a bad one is a fault of the add-in.
class StringFormatterError : public std::runtime_error {
 public:
  explicit StringFormatterError(FormatFault fault)
      : std::runtime_error("Error in string format"), fault_(fault) {}
  [[nodiscard]] FormatFault Fault() const { return fault_; }

 private:
  FormatFault fault_;
};

}  // namespace psl

// Puts the arguments in the places of {0}, {1}, ...
// arguments: may be null, which is the empty text, as is one that isn't there. One that no
//            placeholder names is ignored.
// Throws psl::StringFormatterError.
std::string FormatV(const char* format, std::span<const char* const> arguments);
std::u16string FormatV(const char16_t* format, std::span<const char16_t* const> arguments);

template <std::convertible_to<const char*>... Args>
std::string Format(const char* format, Args... args) {
  const char* const list[] = {args..., nullptr};
  return FormatV(format, list);
}
template <std::convertible_to<const char16_t*>... Args>
std::u16string Format(const char16_t* format, Args... args) {
  const char16_t* const list[] = {args..., nullptr};
  return FormatV(format, list);
}

// The text of a message: from the string resources, else built in.
// false: there is no such number; `out` is as it was.
bool MessageText(unsigned number, std::string& out);
bool MessageText(unsigned number, std::u16string& out);

// A message with its arguments in place. A number without a message gives a text that says so.
// A windows.h that defines FormatMessage has to be included in other sources than this header.
template <typename Char>
std::basic_string<Char> FormatMessageV(unsigned number, std::span<const Char* const> arguments);

template <typename Char = char, std::convertible_to<const Char*>... Args>
std::basic_string<Char> FormatMessage(unsigned number, Args... args) {
  const Char* const list[] = {args..., nullptr};
  return FormatMessageV<Char>(number, list);
}

// How messages show the codes of errors and of structured exceptions: "0xC0000005".
template <typename Char = char>
std::basic_string<Char> HexText(std::uint32_t code);

}  // namespace quantiverse
