#include "addin/services/wizard_detector.h"

#include <algorithm>
#include <string_view>

namespace quantiverse {
namespace {

constexpr std::size_t kTextLimit = 50;

// Each version of Excel ends it in another way.
constexpr std::u16string_view kDialogClass = u"bosa_sdm_XL";

bool BeginsWithAny(const std::u16string& title, const std::vector<std::u16string>& prefixes) {
  return std::any_of(prefixes.begin(), prefixes.end(),
                     [&title](const std::u16string& prefix) { return title.starts_with(prefix); });
}

}  // namespace

bool CXlFormulaWizardDetector::IsWizardTitle(const std::u16string& title) const {
  if (title.empty()) return accepts_empty_title_;
  return BeginsWithAny(title, accepted_) || !BeginsWithAny(title, refused_);
}

bool CXlFormulaWizardDetector::IsWizardWindow(std::uintptr_t window,
                                              std::uint16_t excel_low_word) const {
  if (static_cast<std::uint16_t>(windows_.Parent(window)) != excel_low_word) return false;
  if (!windows_.ClassName(window, kTextLimit).starts_with(kDialogClass)) return false;
  return IsWizardTitle(windows_.Title(window, kTextLimit));
}

}  // namespace quantiverse
