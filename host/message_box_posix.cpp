#include <mutex>
#include <string_view>

#include "host/host.h"
#include "host/message_box.h"

// A system without message boxes: an add-in looks this up in the main program instead.
extern "C" XLHOST_EXPORT int XlHostMessageBox(const char16_t* text, const char16_t* title,
                                              unsigned flags) {
  constexpr int kYes = 6;
  constexpr int kNo = 7;
  if (quantiverse::host::serving_host() == nullptr) return 0;
  auto& host = *quantiverse::host::serving_host();
  const std::lock_guard lock(host.mutex);
  const auto all_of = [](const char16_t* t) { return t != nullptr ? t : std::u16string_view(); };
  return host.dialogs.answer_box(all_of(text), all_of(title), flags) ? kYes : kNo;
}

namespace quantiverse::host {

BoxWatch::BoxWatch() = default;
BoxWatch::~BoxWatch() = default;

}  // namespace quantiverse::host
