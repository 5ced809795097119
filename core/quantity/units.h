#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "quantity/unit_systems.h"
#include "quantity/user_units.h"
#include "text/stack_space.h"

namespace quantiverse {

// The parentheses of a line that hold no unit expression, with what reading them said. The
// expression grammar tries the same text as a unit once a level, so without this a chain such as
// `sec(*sec(*sec(...` would be read to its end from each of its parentheses.
class FailedParentheses {
 public:
  struct Failure {
    std::uint32_t message;
    bool had_units;  // units were read before it went wrong, and they count
  };
  // Null if nothing is known of a parenthesis that opens at `position`.
  [[nodiscard]] const Failure* find(const char* position) const {
    if (messages_.empty()) return nullptr;
    const auto found = at_.find(position);
    return found == at_.end() ? nullptr : &found->second;
  }
  [[nodiscard]] std::string_view message(const Failure& failure) const {
    return messages_[failure.message];
  }
  // REQUIRES: the text up to `reach` has been looked at to find that out.
  void note(const char* position, const char* reach, std::string_view message, bool had_units) {
    if (reach - position < kWorthNoting) return;
    if (messages_.empty() || messages_.back() != message) messages_.emplace_back(message);
    at_.emplace(position, Failure{static_cast<std::uint32_t>(messages_.size() - 1), had_units});
  }
  // What is a unit may change from line to line.
  void begin_line() {
    if (messages_.empty()) return;
    messages_.clear();
    at_ = decltype(at_)();  // clear() would take as long as the longest line before
  }

 private:
  static constexpr std::ptrdiff_t kWorthNoting = 64;
  std::vector<std::string> messages_;
  std::unordered_map<const char*, Failure> at_;
};

// All that reading and writing the text of a unit depends on.
struct Units {
  UserUnits users;
  UnitSystems systems;
  FailedParentheses failed_parentheses;
  StackSpace stack;
};

}  // namespace quantiverse
