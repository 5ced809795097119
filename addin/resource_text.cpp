#include "addin/resource_text.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "addin/addin_state.h"
#include "addin/workspace.h"

namespace quantiverse {
namespace {

constexpr int kWorkspaceCountry = 0;  // the setting that tells Excel's language

// What a "#" begins.
struct Reference {
  std::size_t length = 1;
  bool in_excels_language = false;
  std::optional<std::uint64_t> id;  // without a number it is no reference
};

// The value of a digit, `base` or more for other characters.
template <typename Char>
unsigned DigitValue(Char c, unsigned base) {
  if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
  if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
  if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
  return base;
}

// Takes digits off the front of `text`. What is beyond 32 bits gives some number beyond them.
// Gives nothing if there is no digit.
template <typename Char>
std::optional<std::uint64_t> TakeDigits(unsigned base, std::basic_string_view<Char>& text) {
  constexpr std::uint64_t kTooLarge = std::uint64_t{1} << 32U;
  std::optional<std::uint64_t> number;
  while (!text.empty() && DigitValue(text.front(), base) < base) {
    const std::uint64_t before = number.value_or(0);
    number = before < kTooLarge ? before * base + DigitValue(text.front(), base) : kTooLarge;
    text.remove_prefix(1);
  }
  return number;
}

// REQUIRES: the text begins with "#".
template <typename Char>
Reference ReadReference(std::basic_string_view<Char> text) {
  Reference reference;
  std::basic_string_view<Char> rest = text.substr(1);
  if (!rest.empty() && rest.front() == '@') {
    reference.in_excels_language = true;
    rest.remove_prefix(1);
  }
  if (rest.size() > 2 && rest[0] == '0' && rest[1] == 'x') {
    std::basic_string_view<Char> digits = rest.substr(2);
    reference.id = TakeDigits(16, digits);
    if (reference.id.has_value()) rest = digits;  // else the 0 is a number of its own
  }
  if (!reference.id.has_value()) reference.id = TakeDigits(10, rest);
  if (reference.id.has_value()) reference.length = text.size() - rest.size();
  return reference;
}

std::uint16_t ExcelsLanguage() {
  std::optional<std::uint16_t>& language = State().registration.excels_language;
  if (!language.has_value()) {
    CXlOper country;
    const bool is_known = GetWorkspaceItem(kWorkspaceCountry, country);
    const StringResources& resources = State().resources;
    language =
        resources.FindLanguageOf(is_known ? country.ToInt() : 0).value_or(resources.Language());
  }
  return *language;
}

// Nothing if there is no such string.
std::optional<std::u16string_view> FindString(const Reference& reference) {
  constexpr std::uint64_t kLargest = std::numeric_limits<std::uint32_t>::max();
  if (!reference.id.has_value() || *reference.id > kLargest) return {};
  const StringResources& resources = State().resources;
  return resources.Find(reference.in_excels_language ? ExcelsLanguage() : resources.Language(),
                        static_cast<std::uint32_t>(*reference.id));
}

void AppendWide(std::u16string& out, std::u16string_view text) { out += text; }
void AppendWide(std::string& out, std::u16string_view text) { out += NarrowText(text); }

template <typename Char>
bool Expand(std::basic_string_view<Char> text, std::basic_string<Char>& out) {
  std::basic_string<Char> expanded;
  bool found_all = true;
  while (true) {
    const std::size_t hash = text.find(Char{'#'});
    expanded += text.substr(0, hash);
    if (hash == text.npos) break;
    text.remove_prefix(hash);
    const Reference reference = ReadReference(text);
    if (const auto string = FindString(reference); string.has_value()) {
      AppendWide(expanded, *string);
    } else {
      expanded += text.substr(0, reference.length);
      if (reference.id.has_value()) found_all = false;
    }
    text.remove_prefix(reference.length);
  }
  out = std::move(expanded);
  return found_all;
}

}  // namespace

bool ExpandResourceText(std::u16string_view text, std::u16string& out) { return Expand(text, out); }
bool ExpandResourceText(std::string_view text, std::string& out) { return Expand(text, out); }

}  // namespace quantiverse
