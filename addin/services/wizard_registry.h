#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

// The functions that want more of the Function Arguments dialog than Excel offers: a list to choose
// from, or a button that edits, beside the field of an argument.
//
// What an add-in implements here is called by the hook on Excel's thread, and nothing catches
// there: an exception out of any of it ends the process.
namespace quantiverse {

// What an argument has beside its field.
enum class XlWizardKind { kNone = 0, kList = 1, kButton = 2 };

// The items of a list, which is asked anew each time that it is shown.
class IXlWizardList {
 public:
  IXlWizardList() = default;
  IXlWizardList(const IXlWizardList&) = delete;
  IXlWizardList& operator=(const IXlWizardList&) = delete;
  virtual ~IXlWizardList() = default;

  [[nodiscard]] virtual int ItemCount() const = 0;
  [[nodiscard]] virtual std::u16string Item(int i) const = 0;  // counted from 0
};

// What happens when a button is pressed.
class IXlWizardButton {
 public:
  IXlWizardButton() = default;
  IXlWizardButton(const IXlWizardButton&) = delete;
  IXlWizardButton& operator=(const IXlWizardButton&) = delete;
  virtual ~IXlWizardButton() = default;

  // text:   what the field holds, to be changed in place.
  // parent: the system's handle of the window that a dialog of the button's own belongs to.
  // true:   the text has changed.
  virtual bool Edit(std::u16string& text, std::uintptr_t parent) = 0;
};

// A function in that dialog. Its arguments are counted from 0, and there may be fewer of them than
// the dialog asks for.
class IXlWizExUIFunction {
 public:
  IXlWizExUIFunction() = default;
  IXlWizExUIFunction(const IXlWizExUIFunction&) = delete;
  IXlWizExUIFunction& operator=(const IXlWizExUIFunction&) = delete;
  virtual ~IXlWizExUIFunction() = default;

  [[nodiscard]] virtual bool HasExtensions() const = 0;
  [[nodiscard]] virtual XlWizardKind KindOf(int) const { return XlWizardKind::kNone; }
  // Of an argument of that kind. Null does nothing.
  [[nodiscard]] virtual IXlWizardList* List(int) const { return nullptr; }
  [[nodiscard]] virtual IXlWizardButton* Button(int) const { return nullptr; }
};

// The key that does what a click on the extension does, pressed in the field itself.
struct XlWizardTrigger {
  std::uint16_t key;       // as Windows counts keys
  std::uint16_t modifier;  // a key to be held down; 0 for none
  std::uint32_t mode;      // what the field has to hold: see WizardModeAllows
};

class IXlWizExUIFunctionRegistry {
 public:
  IXlWizExUIFunctionRegistry() = default;
  IXlWizExUIFunctionRegistry(const IXlWizExUIFunctionRegistry&) = delete;
  IXlWizExUIFunctionRegistry& operator=(const IXlWizExUIFunctionRegistry&) = delete;
  virtual ~IXlWizExUIFunctionRegistry() = default;

  [[nodiscard]] virtual bool IsEnabled() const = 0;
  [[nodiscard]] virtual bool IsSecondFlagSet() const = 0;
  // Null if there is none of that name.
  [[nodiscard]] virtual IXlWizExUIFunction* Find(std::string_view name) const = 0;
  // Null for kinds that no key triggers.
  [[nodiscard]] virtual const XlWizardTrigger* Trigger(XlWizardKind kind) const = 0;
};

class CXlWizExUIFunctionRegistry final : public IXlWizExUIFunctionRegistry {
 public:
  [[nodiscard]] bool IsEnabled() const override { return is_enabled_; }
  [[nodiscard]] bool IsSecondFlagSet() const override { return second_flag_; }
  [[nodiscard]] IXlWizExUIFunction* Find(std::string_view name) const override;
  [[nodiscard]] const XlWizardTrigger* Trigger(XlWizardKind kind) const override;

  void Add(std::string name, std::shared_ptr<IXlWizExUIFunction> function);
  // One function at least has extensions.
  [[nodiscard]] bool WantsWizard() const;
  void Forget() { functions_.clear(); }

 private:
  bool is_enabled_ = true;
  bool second_flag_ = true;
  std::map<std::string, std::shared_ptr<IXlWizExUIFunction>, std::less<>> functions_;
};

}  // namespace quantiverse
