#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "quantity/dimvalue.h"
#include "text/text_buf.h"

namespace quantiverse {

// The units that a text has defined for itself. Beware: a value counts MKS per unit, the reverse
// of the dictionary.
class UserUnits {
 public:
  // The value of one unit of that exact name in MKS, or null.
  [[nodiscard]] const DimValue* find_user_unit(std::string_view name) const;

  // Defines `name`, or gives it a new value; only the first component and the exponents count.
  // err: a unit of value zero is refused.
  void store_user_unit(std::string_view name, const DimValue& value, TextBuf& err);

  [[nodiscard]] bool empty() const { return units_.empty(); }
  void clear() {
    if (!empty()) *this = UserUnits();
  }
  // Changes with every definition, so that what was read under other definitions can be told.
  [[nodiscard]] std::uint64_t generation() const { return generation_; }

 private:
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };
  std::unordered_map<std::string, DimValue, Hash, std::equal_to<>> units_;
  std::uint64_t generation_ = 0;
};

}  // namespace quantiverse
