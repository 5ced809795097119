#include "addin/message_table.h"

#include <array>
#include <string_view>

namespace quantiverse {
namespace {

// A message in both forms, which are the same text but for one.
struct MessageRow {
  unsigned number;
  const char* built_in;
  const char16_t* resource;
};

#define QV_MESSAGE(number, text) {number, text, u##text},
#define QV_MESSAGE_IN_TWO(number, built_in, resource) {number, built_in, u##resource},

// clang-format off
constexpr MessageRow kRows[] = {
#include "addin/messages_english.inc"
};
// clang-format on

#undef QV_MESSAGE
#undef QV_MESSAGE_IN_TWO

constexpr bool IsCounted() {
  for (unsigned i = 0; i < std::size(kRows); ++i) {
    if (kRows[i].number != i) return false;
  }
  return true;
}
static_assert(std::size(kRows) == kMessageCount && IsCounted(), "row i holds message i");

}  // namespace

const char* BuiltInMessage(unsigned number) { return kRows[number].built_in; }

const char16_t* ResourceMessage(unsigned number) { return kRows[number].resource; }

}  // namespace quantiverse
