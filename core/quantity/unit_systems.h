#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "quantity/dimvalue.h"
#include "text/cursor.h"
#include "text/text_buf.h"

namespace quantiverse {

struct Units;

// How results are written when a statement asks for nothing in particular. Values are held in
// MKS all the same.
enum class UnitSystem : std::uint8_t { kMks, kCgs, kFps, kIps };

inline constexpr std::array<std::string_view, 4> kUnitSystemNames = {"MKS", "cgs", "FPS", "IPS"};
constexpr std::string_view unit_system_name(UnitSystem system) {
  return kUnitSystemNames[static_cast<std::size_t>(system)];
}

// The current system, and the units that are preferred over its base units wherever a result has
// exactly their dimension. The exceptions are kept as stretches of the call's text, since what a
// name means is decided when a result is written.
class UnitSystems {
 public:
  [[nodiscard]] UnitSystem system() const { return system_; }
  void set_unit_system(UnitSystem system) { system_ = system; }
  // MKS without exceptions, as at first.
  void clear() {
    if (system_ != UnitSystem::kMks || !exceptions_.empty()) *this = UnitSystems();
  }

  [[nodiscard]] const std::vector<std::string_view>& exceptions() const { return exceptions_; }
  void replace_exceptions(std::vector<std::string_view> exceptions);

  // What is known of a dimension: the exception it is written in, or null for none. A list of
  // exceptions is walked once for a dimension and not once for a result.
  using Choice = std::optional<const std::string_view*>;
  [[nodiscard]] Choice find_choice(const Exponents& exps, std::uint64_t user_units);
  void note_choice(const Exponents& exps, const std::string_view* exception);

 private:
  struct HashBytes {
    std::size_t operator()(const Exponents& exps) const;
  };
  struct EqualBytes {
    bool operator()(const Exponents& a, const Exponents& b) const;
  };

  UnitSystem system_ = UnitSystem::kMks;
  std::vector<std::string_view> exceptions_;  // in the call's text
  using Choices = std::unordered_map<Exponents, const std::string_view*, HashBytes, EqualBytes>;
  Choices choices_;               // empty as long as exceptions_ is
  std::uint64_t user_units_ = 0;  // the generation that choices_ was made under
};

// Reads the optional list of exceptions at the cursor, "(unit, unit, ...)", and puts it in force.
// No list or an empty one changes nothing, and neither does one with an error.
// err: cleared first; says what is wrong with the list.
void read_default_unit_list(Units& units, Cursor& expptr, TextBuf& err);

}  // namespace quantiverse
