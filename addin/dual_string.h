#pragma once

#include <cstdint>
#include <string>

namespace quantiverse {

// A text that is known in one width and made in the other when that is asked for first, through
// the system's code page. It reads Excel's text arguments, which stay Excel's, and holds texts of
// the add-in's own. Not to be asked by two threads at once.
class CXlDualString {
 public:
  CXlDualString() : CXlDualString(static_cast<const char*>(nullptr)) {}
  // Borrowed: `text` has to outlive this. Null is the empty text.
  explicit CXlDualString(const char* text);
  explicit CXlDualString(const char16_t* text);
  // Owned.
  explicit CXlDualString(std::string text);
  explicit CXlDualString(std::u16string text);

  // Valid as long as this is.
  [[nodiscard]] const char* Narrow() const;
  [[nodiscard]] const char16_t* Wide() const;

  // The narrow form behind what is in `text`.
  void AppendNarrow(std::string& text) const;

 private:
  // Null for the text that is owned.
  const char* borrowed_narrow_ = nullptr;
  const char16_t* borrowed_wide_ = nullptr;
  mutable std::string narrow_;
  mutable std::u16string wide_;
  mutable std::uint16_t flags_;
};

}  // namespace quantiverse
