#include "addin/services/ribbon.h"

#include <cstddef>
#include <utility>

#include "addin/services/names.h"

namespace quantiverse {
namespace {

constexpr std::u16string_view kServer = u"XlpRibbonServer.XlpRtdRibbonServer";
constexpr std::u16string_view kCallbackMacro = u"RibbonCallback";

// What a control gets, by the number of the callback: t the empty text, f false, n the number -1,
// a dot nothing.
constexpr std::string_view kReplies = "..tfttttnttffffnntttttnt...tntt";
static_assert(kReplies.size() == 31);

// The add-in's file without folder, up to its first "."; others may follow in a version number.
std::u16string_view ShortFileName(std::u16string_view path) {
  const std::u16string_view file = FileOfPath(path);
  return file.substr(0, file.find(u'.'));
}

}  // namespace

bool CXlpRibbonImplShared::SetEnabled(bool enabled) { return std::exchange(enabled_, enabled); }

void CXlpRibbonImplShared::SendRibbonTopic(std::u16string_view topic1, std::u16string_view topic2) {
  const std::u16string path = app_.FilePath();
  app_.RequestData(kServer, ShortFileName(path), topic1, topic2);
}

CXlpRibbon::CXlpRibbon(IXlpRibbonApp& app)
    : app_(app), impl_(std::make_unique<CXlpRibbonImplNull>()) {}

bool CXlpRibbon::SetRibbonMode(int mode) {
  switch (mode) {
    case kRibbonNone:
      impl_ = std::make_unique<CXlpRibbonImplNull>();
      break;
    case kRibbonShared:
      impl_ = std::make_unique<CXlpRibbonImplShared>(app_);
      break;
    default:
      return false;
  }
  mode_ = mode;
  return true;
}

void CXlpRibbon::AddinOpened() {
  if (impl_->IsEnabled() && impl_->IsPossible()) impl_->AddinOpened();
}

void CXlpRibbon::AddinClosed() {
  if (impl_->IsEnabled() && impl_->IsPossible()) impl_->AddinClosed();
}

XlRibbonReply DefaultRibbonReply(std::int32_t callback) {
  if (callback < 0 || static_cast<std::size_t>(callback) >= kReplies.size()) return {};
  switch (kReplies[static_cast<std::size_t>(callback)]) {
    case 't':
      return std::string_view();
    case 'f':
      return false;
    case 'n':
      return -1.0;
    default:
      return {};
  }
}

void CRibbonEventRegistrar::Notify(CXlEventArgs&) {
  IXlpRibbonApp* const app = app_();
  std::u16string* const name = app != nullptr ? app->FindFunctionText(kCallbackMacro) : nullptr;
  if (name == nullptr) return;
  const std::u16string path = app->FilePath();
  *name = WithUnderscores(ShortFileName(path), u"_.") + u"." + *name;
}

}  // namespace quantiverse
