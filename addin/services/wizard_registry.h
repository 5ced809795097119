#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

// The functions that want more of the Function Arguments dialog than Excel offers.
namespace quantiverse {

// A function in that dialog.
class IXlWizExUIFunction {
 public:
  IXlWizExUIFunction() = default;
  IXlWizExUIFunction(const IXlWizExUIFunction&) = delete;
  IXlWizExUIFunction& operator=(const IXlWizExUIFunction&) = delete;
  virtual ~IXlWizExUIFunction() = default;

  [[nodiscard]] virtual bool HasExtensions() const = 0;
};

// What makes an extension of a kind show: a key with a modifier held down, as Windows counts them.
struct XlWizardTrigger {
  std::uint16_t key;
  std::uint16_t modifier;
  std::uint32_t mode;
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
  // kind: 1 for a list, 2 for a button; null for others.
  [[nodiscard]] virtual const XlWizardTrigger* Trigger(int kind) const = 0;
};

class CXlWizExUIFunctionRegistry final : public IXlWizExUIFunctionRegistry {
 public:
  [[nodiscard]] bool IsEnabled() const override { return is_enabled_; }
  [[nodiscard]] bool IsSecondFlagSet() const override { return second_flag_; }
  [[nodiscard]] IXlWizExUIFunction* Find(std::string_view name) const override;
  [[nodiscard]] const XlWizardTrigger* Trigger(int kind) const override;

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
