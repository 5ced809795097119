#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/invoke.h"
#include "host/record.h"
#include "host/value.h"

// Calls of functions that an add-in registered, by their type texts.
namespace quantiverse::host {

// What a letter of a type text stands for.
enum class Letter {
  kDouble,      // B
  kInteger,     // J
  kBool,        // A
  kNarrowText,  // C
  kWideText,    // C%
  kRecord4,     // P, R
  kRecord12,    // Q, U
};

struct Signature {
  Letter result = Letter::kRecord12;
  std::vector<Letter> arguments;
  bool is_thread_safe = false;  // "$"
};

// Nothing for a text with other letters, too many of them, or a result that is no record.
std::optional<Signature> read_type_text(std::string_view text);

// What a call is given for one argument.
struct Argument {
  Value value;
  bool is_null_pointer = false;
};

// An argument list ready to be passed, any number of times.
class PreparedArguments {
 public:
  PreparedArguments() = default;
  PreparedArguments(const PreparedArguments&) = delete;
  PreparedArguments& operator=(const PreparedArguments&) = delete;

  // Adds one argument. REQUIRES: its value is no reference, and there are less than kMostSlots.
  // false: it doesn't convert.
  [[nodiscard]] bool add(Letter letter, const Argument& argument);
  [[nodiscard]] std::span<const Slot> slots() const { return std::span(slots_).first(count_); }

 private:
  bool add_value(Letter letter, const Value& value);
  bool add_text(Letter letter, const Value& value);
  template <class Char>
  void add_encoded(std::string_view text);
  template <class Form>
  bool add_record(const Value& value);
  template <class Pointed>
  void add_pointer(const Pointed* pointer);
  void add_word(std::intptr_t word);

  void add_slot(const Slot& slot) { slots_[count_++] = slot; }

  std::array<Slot, kMostSlots> slots_;
  std::size_t count_ = 0;
  Memory memory_;
};

// What came back from the add-in.
struct Returned {
  Value value;
  bool is_freed = false;  // the add-in was asked to free it
};

}  // namespace quantiverse::host
