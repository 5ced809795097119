#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/function_call.h"
#include "host/value.h"

namespace quantiverse::host {

enum class MacroType { kHidden = 0, kFunction = 1, kCommand = 2 };

struct Registration {
  int id = 0;
  int form = 0;               // 4 or 12, by the entry that the call came through
  std::vector<Value> values;  // the call's arguments
  std::string export_name;
  std::string function_text;
  MacroType macro_type = MacroType::kFunction;
  std::optional<Signature> signature;  // nothing for a type text that the host can't call
};

// What add-ins registered, and the names that came with it.
class Registry {
 public:
  // Gives the registration its id: 1, 2, ..., none twice.
  int add(Registration registration);
  bool remove(int id);
  bool remove_name(std::string_view name);

  // The last one registered under that function text, case ignored; null if there is none.
  [[nodiscard]] const Registration* find(std::string_view function_text, MacroType type) const;

  [[nodiscard]] const std::vector<Registration>& registrations() const { return registrations_; }
  [[nodiscard]] const std::vector<std::string>& names() const { return names_; }

 private:
  std::vector<Registration> registrations_;
  std::vector<std::string> names_;
  int last_id_ = 0;
};

}  // namespace quantiverse::host
