#include "addin/dual_string.h"

#include <array>
#include <cstddef>
#include <utility>

#include "addin/host.h"

namespace quantiverse {
namespace {

constexpr std::uint16_t kOwnsNarrow = 1;
constexpr std::uint16_t kNarrowIsValid = 2;
constexpr std::uint16_t kOwnsWide = 16;
constexpr std::uint16_t kWideIsValid = 32;

}  // namespace

CXlDualString::CXlDualString(const char* text)
    : borrowed_narrow_(text != nullptr ? text : ""), flags_(kNarrowIsValid) {}

CXlDualString::CXlDualString(const char16_t* text)
    : borrowed_wide_(text != nullptr ? text : u""), flags_(kWideIsValid) {}

CXlDualString::CXlDualString(std::string text)
    : narrow_(std::move(text)), flags_(kOwnsNarrow | kNarrowIsValid) {}

CXlDualString::CXlDualString(std::u16string text)
    : wide_(std::move(text)), flags_(kOwnsWide | kWideIsValid) {}

const char* CXlDualString::Narrow() const {
  if ((flags_ & kNarrowIsValid) == 0) {
    narrow_ = NarrowText(Wide());
    flags_ |= kOwnsNarrow | kNarrowIsValid;
  }
  return (flags_ & kOwnsNarrow) != 0 ? narrow_.c_str() : borrowed_narrow_;
}

void CXlDualString::AppendNarrow(std::string& text) const {
  if ((flags_ & kNarrowIsValid) == 0) {
    // Nearly all texts are short and ASCII, and need no code page.
    std::array<char, 32> few;
    std::size_t count = 0;
    const char16_t* wide = Wide();
    for (; *wide != 0 && *wide < 0x80 && count < few.size(); ++wide) {
      few[count++] = static_cast<char>(*wide);
    }
    if (*wide == 0) {
      text.append(few.data(), count);
      return;
    }
  }
  text += Narrow();
}

const char16_t* CXlDualString::Wide() const {
  if ((flags_ & kWideIsValid) == 0) {
    wide_ = WideText(Narrow());
    flags_ |= kOwnsWide | kWideIsValid;
  }
  return (flags_ & kOwnsWide) != 0 ? wide_.c_str() : borrowed_wide_;
}

}  // namespace quantiverse
