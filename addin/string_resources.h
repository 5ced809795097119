#pragma once

#include <cstdint>
#include <span>

// The module's string resources by language, as data that every platform reads alike.
namespace quantiverse {

// A language has its primary language in the low ten bits, its variety above them.
inline constexpr std::uint16_t kNeutralLanguage = 0;
inline constexpr std::uint16_t kEnglish = 0x0409;

struct StringResource {
  std::uint16_t language;
  std::uint32_t id;
  const char16_t* text;
};

// The strings of the module; a part of the add-in's state.
struct StringResources {
  // In the module's order. The messages in English need no row.
  std::span<const StringResource> rows = {};
  // Set at most once, at start-up; neutral for none.
  std::uint16_t language_override = kNeutralLanguage;

  // The override, or else the language of the thread: English, where threads have none.
  [[nodiscard]] std::uint16_t Language() const;
  // The text in `language`, else in the first with the same primary language, else in the neutral
  // one, else in English if it is a message; null if there is none.
  [[nodiscard]] const char16_t* Find(std::uint16_t language, std::uint32_t id) const;
};

}  // namespace quantiverse
