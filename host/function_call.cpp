#include "host/function_call.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "host/text.h"

namespace quantiverse::host {
namespace {

bool is_record(Letter letter) { return letter == Letter::kRecord4 || letter == Letter::kRecord12; }

bool is_pointer(Letter letter) {
  return is_record(letter) || letter == Letter::kNarrowText || letter == Letter::kWideText;
}

std::optional<Letter> letter_of(char c, bool has_percent) {
  if (has_percent) return c == 'C' ? std::optional(Letter::kWideText) : std::nullopt;
  switch (c) {
    case 'B':
      return Letter::kDouble;
    case 'J':
      return Letter::kInteger;
    case 'A':
      return Letter::kBool;
    case 'C':
      return Letter::kNarrowText;
    case 'P':
    case 'R':
      return Letter::kRecord4;
    case 'Q':
    case 'U':
      return Letter::kRecord12;
    default:
      return std::nullopt;
  }
}

// A number, or a text that reads as one; "inf", "-inf" and "nan" too.
std::optional<double> argument_number(const Value& value) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (value.is<Nil>() || value.is<Missing>()) return 0.0;
  const auto* text = value.as<std::string>();
  if (text == nullptr) return value.is<bool>() ? std::nullopt : plain_number(value);
  if (*text == "inf") return kInfinity;
  if (*text == "-inf") return -kInfinity;
  if (*text == "nan") return std::numeric_limits<double>::quiet_NaN();
  return parse_number(*text);
}

}  // namespace

std::optional<Signature> read_type_text(std::string_view text) {
  Signature signature;
  while (!text.empty() && (text.back() == '$' || text.back() == '#' || text.back() == '!')) {
    signature.is_thread_safe = signature.is_thread_safe || text.back() == '$';
    text.remove_suffix(1);
  }
  std::vector<Letter> letters;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool has_percent = i + 1 < text.size() && text[i + 1] == '%';
    const auto letter = letter_of(text[i], has_percent);
    if (!letter) return std::nullopt;
    letters.push_back(*letter);
    if (has_percent) ++i;
  }
  if (letters.empty() || !is_record(letters.front()) || letters.size() > kMostSlots + 1) {
    return std::nullopt;
  }
  signature.result = letters.front();
  signature.arguments.assign(letters.begin() + 1, letters.end());
  return signature;
}

bool PreparedArguments::add(Letter letter, const Argument& argument) {
  if (!argument.is_null_pointer) return add_value(letter, argument.value);
  if (is_pointer(letter)) add_word(0);
  return is_pointer(letter);
}

bool PreparedArguments::add_value(Letter letter, const Value& value) {
  switch (letter) {
    case Letter::kDouble: {
      const auto number = argument_number(value);
      if (number) add_slot(*number);
      return number.has_value();
    }
    case Letter::kInteger: {
      using Limits = std::numeric_limits<std::int32_t>;
      const double whole = std::trunc(argument_number(value).value_or(HUGE_VAL));
      const bool fits = whole >= Limits::min() && whole <= Limits::max();
      if (fits) add_word(static_cast<std::int32_t>(whole));
      return fits;
    }
    case Letter::kBool: {
      const auto* flag = value.as<bool>();
      const bool is_left_out = value.is<Nil>() || value.is<Missing>();
      if (flag != nullptr || is_left_out) add_word(flag != nullptr && *flag ? 1 : 0);
      return flag != nullptr || is_left_out;
    }
    case Letter::kNarrowText:
    case Letter::kWideText:
      return add_text(letter, value);
    case Letter::kRecord4:
      return add_record<Form4>(value);
    case Letter::kRecord12:
      return add_record<Form12>(value);
  }
  return false;
}

bool PreparedArguments::add_text(Letter letter, const Value& value) {
  const auto* text = value.as<std::string>();
  if (text == nullptr && !value.is<Nil>() && !value.is<Missing>()) return false;
  const std::string_view given = text != nullptr ? std::string_view(*text) : std::string_view();
  if (letter == Letter::kWideText) {
    add_encoded<char16_t>(given);
  } else {
    add_encoded<char>(given);
  }
  return true;
}

template <class Char>
void PreparedArguments::add_encoded(std::string_view text) {
  const std::size_t size = encoded_size(text);
  Char* const encoded = memory_.allocate<Char>(size + 1);
  encode(text, std::span(encoded, size));
  encoded[size] = 0;
  add_pointer(encoded);
}

template <class Form>
bool PreparedArguments::add_record(const Value& value) {
  auto* const record = memory_.allocate<Record<Form>>(1);
  add_pointer(record);
  return write_record(value, *record, memory_);
}

template <class Pointed>
void PreparedArguments::add_pointer(const Pointed* pointer) {
  add_word(reinterpret_cast<std::intptr_t>(pointer));
}

void PreparedArguments::add_word(std::intptr_t word) { add_slot(word); }

}  // namespace quantiverse::host
