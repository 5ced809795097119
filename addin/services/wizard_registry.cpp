#include "addin/services/wizard_registry.h"

#include <algorithm>
#include <utility>

namespace quantiverse {
namespace {

constexpr XlWizardTrigger kListTrigger{40, 0, 2};     // the down arrow
constexpr XlWizardTrigger kButtonTrigger{13, 18, 3};  // return with Alt

}  // namespace

IXlWizExUIFunction* CXlWizExUIFunctionRegistry::Find(std::string_view name) const {
  const auto found = functions_.find(name);
  return found != functions_.end() ? found->second.get() : nullptr;
}

const XlWizardTrigger* CXlWizExUIFunctionRegistry::Trigger(XlWizardKind kind) const {
  if (kind == XlWizardKind::kList) return &kListTrigger;
  return kind == XlWizardKind::kButton ? &kButtonTrigger : nullptr;
}

void CXlWizExUIFunctionRegistry::Add(std::string name,
                                     std::shared_ptr<IXlWizExUIFunction> function) {
  functions_.insert_or_assign(std::move(name), std::move(function));
}

bool CXlWizExUIFunctionRegistry::WantsWizard() const {
  return std::any_of(functions_.begin(), functions_.end(),
                     [](const auto& entry) { return entry.second->HasExtensions(); });
}

}  // namespace quantiverse
