// What Windows has for the Function Arguments dialog.
#include "addin/platform_services.h"
#include "addin/services/wizard_detector.h"
#include "addin/windows/windows.h"
#include "addin/windows/wizard_hook.h"

namespace quantiverse {
namespace {

using TextReader = int(WINAPI*)(HWND, wchar_t*, int);

std::u16string Read(TextReader read, std::uintptr_t window, std::size_t limit) {
  std::wstring text(limit + 1, L'\0');  // with the NUL
  const int length =
      read(reinterpret_cast<HWND>(window), text.data(), static_cast<int>(text.size()));
  return {AsUtf16(text.data()), static_cast<std::size_t>(length)};
}

class CXlWindowReader final : public IXlWindowReader {
 public:
  [[nodiscard]] std::uintptr_t Parent(std::uintptr_t window) const override {
    return reinterpret_cast<std::uintptr_t>(GetParent(reinterpret_cast<HWND>(window)));
  }
  [[nodiscard]] std::u16string ClassName(std::uintptr_t window, std::size_t limit) const override {
    return Read(GetClassNameW, window, limit);
  }
  [[nodiscard]] std::u16string Title(std::uintptr_t window, std::size_t limit) const override {
    return Read(GetWindowTextW, window, limit);
  }
};

}  // namespace

std::unique_ptr<IXlWizardHook> PlatformWizardHook() { return std::make_unique<CWizardHook>(); }

std::unique_ptr<IXlFormulaWizardDetector> PlatformWizardDetector() {
  static const CXlWindowReader kReader;
  return std::make_unique<CXlFormulaWizardDetector>(kReader);
}

}  // namespace quantiverse
