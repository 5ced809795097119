#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "addin/services/wizard.h"

namespace quantiverse {

// What the detector asks of the system.
// window: the system's handle. A window that is gone has no parent, class or title.
class IXlWindowReader {
 public:
  IXlWindowReader() = default;
  IXlWindowReader(const IXlWindowReader&) = delete;
  IXlWindowReader& operator=(const IXlWindowReader&) = delete;
  virtual ~IXlWindowReader() = default;

  [[nodiscard]] virtual std::uintptr_t Parent(std::uintptr_t window) const = 0;
  // `limit` characters at most.
  [[nodiscard]] virtual std::u16string ClassName(std::uintptr_t window,
                                                 std::size_t limit) const = 0;
  [[nodiscard]] virtual std::u16string Title(std::uintptr_t window, std::size_t limit) const = 0;
};

// Knows the dialog by its class, by Excel's main window behind it and, as other dialogs have these
// too, by its title. A title that it doesn't know counts, for an Excel of another language.
class CXlFormulaWizardDetector : public IXlFormulaWizardDetector {
 public:
  // windows: has to outlive this.
  explicit CXlFormulaWizardDetector(const IXlWindowReader& windows) : windows_(windows) {}

  [[nodiscard]] bool IsWizardTitle(const std::u16string& title) const override;
  [[nodiscard]] bool IsWizardWindow(std::uintptr_t window,
                                    std::uint16_t excel_low_word) const override;

 private:
  const IXlWindowReader& windows_;
  // How titles begin.
  std::vector<std::u16string> accepted_ = {u"Function Arguments"};
  std::vector<std::u16string> refused_ = {u"Find"};
  bool accepts_empty_title_ = true;
};

}  // namespace quantiverse
