#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// The add-in's string resources by language.
namespace quantiverse {

// A language has its primary language in the low ten bits, its variety above them.
inline constexpr std::uint16_t kNeutralLanguage = 0;
inline constexpr std::uint16_t kEnglish = 0x0409;

struct StringResource {
  std::uint16_t language;
  std::uint32_t id;
  std::u16string_view text;
};

// What is told of the string resources; a part of the add-in's state.
struct StringResources {
  // Strings besides those of the module, before them in its order.
  std::span<const StringResource> rows = {};
  // Set at most once, at start-up; neutral for none.
  std::uint16_t language_override = kNeutralLanguage;

  // The override, or else the language of the thread.
  [[nodiscard]] std::uint16_t Language() const;
  // The text in `language`, else in the first with the same primary language, else in the neutral
  // one, else in English if it is a message.
  [[nodiscard]] std::optional<std::u16string_view> Find(std::uint16_t language,
                                                        std::uint32_t id) const;
  // The first language with texts whose country is this one; 0 is none's.
  [[nodiscard]] std::optional<std::uint16_t> FindLanguageOf(int country) const;
};

}  // namespace quantiverse
