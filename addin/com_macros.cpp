#include "addin/com_macros.h"

#include "addin/host.h"
#include "addin/messages.h"
#include "addin/services/com_objects.h"
#include "addin/services/names.h"
#include "addin/xlapp.h"

namespace quantiverse {
namespace {

// Of the first of the three events.
constexpr int kSheetActivateNumber = 4;

bool Fail(XlComStep step, XlComFailure& failure) {
  failure = {step.call, step.result};
  return false;
}

// Excel finds the export by the property's name.
bool MakeMacro(CXllApp& app, const char16_t* property, const std::u16string& name) {
  const std::string export_name = NarrowText(Format(u"CXllComImpl_{0}", property));
  XlFunctionRecord record;
  record.export4 = export_name.c_str();
  record.types4 = "A";
  record.name = name.c_str();
  record.macro_type = 2;
  record.category = "User Defined";
  record.help_id = 2;
  return app.Functions().AddAndRegister(CXlFunctionRegistration(record));
}

}  // namespace

const std::array<const char16_t*, CXlOldStyleMacros::kCount> CXlOldStyleMacros::kProperties = {
    u"OnSheetActivate", u"OnSheetDeactivate", u"OnCalculate"};

bool CXlOldStyleMacros::Connect(CXllApp& app, IXlDispatch& application, XlComFailure& failure) {
  const std::u16string base = MacroBaseName(app.FilePath());
  std::array<std::u16string, kCount> names;
  for (std::size_t i = 0; i < kCount; ++i) {
    names[i] = Format(u"xll_{0}_{1}", base.c_str(), kProperties[i]);
    if (!MakeMacro(app, kProperties[i], names[i])) return Fail({u"xlfRegister", kComDone}, failure);
  }
  for (std::size_t i = 0; i < kCount; ++i) {
    XlComValue old;
    XlComStep step = GetComProperty(application, kProperties[i], kUserLocale, old);
    if (!step.Failed()) step = PutComProperty(application, kProperties[i], names[i]);
    if (step.Failed()) {
      Restore(application, i);
      return Fail(step, failure);
    }
    displaced_[i] = TextOf(old);
    // Left there by a library that had no time to clean up: calling it would never end.
    if (displaced_[i] == names[i]) displaced_[i].clear();
  }
  return true;
}

void CXlOldStyleMacros::Disconnect(IXlDispatch& application) { Restore(application, kCount); }

void CXlOldStyleMacros::Restore(IXlDispatch& application, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    PutComProperty(application, kProperties[i], displaced_[i]);
    displaced_[i].clear();
  }
}

// The chain of macros that stood before is kept alive, whatever becomes of the event here.
void CXlOldStyleMacros::OnMacro(CXllApp& app, IXlDispatch& application, XlOldStyleEvent event) {
  const auto index = static_cast<std::size_t>(event);
  XlComValue sheet;
  if (event == XlOldStyleEvent::kSheetActivate) {
    GetComProperty(application, u"ActiveWorksheet", kUserLocale, sheet);
  }
  const XlDispatchPtr object = ObjectOf(sheet);
  const CXlComObject worksheet(object);
  const XlEventArgument argument = object != nullptr ? &worksheet : nullptr;
  app.OnExcelEvent(kSheetActivateNumber + static_cast<int>(event), {&argument, 1});
  if (displaced_[index].empty()) return;
  const std::u16string text = Format(u"{0}()", displaced_[index].c_str());
  XlComValue dropped;
  RunExcelMacroFromDisp(application, text, dropped);
}

}  // namespace quantiverse
