#pragma once

#include <cstdint>
#include <string>

#include "addin/services/wizard_registry.h"

// Lists and buttons beside the arguments in Excel's own Function Arguments dialog. They are drawn
// from outside by hooks on its windows, so only Windows has them: elsewhere nothing implements
// the hook, and whoever holds a pointer to one holds null.
namespace quantiverse {

// Tells the dialog from Excel's other windows.
class IXlFormulaWizardDetector {
 public:
  IXlFormulaWizardDetector() = default;
  IXlFormulaWizardDetector(const IXlFormulaWizardDetector&) = delete;
  IXlFormulaWizardDetector& operator=(const IXlFormulaWizardDetector&) = delete;
  virtual ~IXlFormulaWizardDetector() = default;

  [[nodiscard]] virtual bool IsWizardTitle(const std::u16string& title) const = 0;
  // window:         the system's handle.
  // excel_low_word: the lower 16 bits of the handle of Excel's main window.
  [[nodiscard]] virtual bool IsWizardWindow(std::uintptr_t window,
                                            std::uint16_t excel_low_word) const = 0;
};

// The hooks on Excel's thread. A process has them once at most.
class IXlWizardHook {
 public:
  IXlWizardHook() = default;
  IXlWizardHook(const IXlWizardHook&) = delete;
  IXlWizardHook& operator=(const IXlWizardHook&) = delete;
  virtual ~IXlWizardHook() = default;

  // From here on the functions of the registry are extended.
  virtual void Connect(const IXlWizExUIFunctionRegistry& registry) = 0;
  [[nodiscard]] virtual bool IsConnected() const = 0;
  virtual void Install() = 0;    // throws CXlRuntimeException
  virtual void Uninstall() = 0;  // nothing if it isn't installed
};

}  // namespace quantiverse
