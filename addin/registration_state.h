#pragma once

#include <cstdint>
#include <optional>

namespace quantiverse {

struct XlFunctionRecord;

// What registering keeps in the add-in's state.
struct RegistrationState {
  const XlFunctionRecord* first_record = nullptr;  // static ones, the last constructed first
  std::optional<std::uint16_t> excels_language;    // that of "#@" references, once it is known
};

}  // namespace quantiverse
