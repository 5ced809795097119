// What another add-in would add to the library: a function, and observers that tell in alerts what
// they were told. Excel has to say no to the alert of an event to have it cancelled.
#include <string>

#include "addin/addin_state.h"
#include "addin/excel_call.h"
#include "addin/registration.h"
#include "addin/services/events.h"

namespace quantiverse {
namespace {

const XlStaticFunctionRecord kTwin{{
    .export4 = "Quantiverse_4",
    .export12 = "Quantiverse_12",
    .types4 = "RBCC",
    .types12 = "UBC%C%$",
    .name = u"Twin",
    .wide_arguments = u"#53253,#0xD009",
    .wide_category = u"Twins",
    .wide_argument_help = u"first\0second.\0third..\0",
}};

const XlStaticFunctionRecord kForNewExcel{{
    .export12 = "Quantiverse_12",
    .types12 = "UBC%C%$",
    .name = u"ForNewExcel",
    .minimum_version = 15,
}};

// The host has no object model, on no system: it calls the observer function itself.
struct NoObjectModel {
  NoObjectModel() {
    State().com.find_system = []() -> IXlComSystem* { return nullptr; };
  }
};
const NoObjectModel kNoObjectModel;

bool Ask(const std::u16string& text) {
  constexpr int kOkAndCancel = 1;
  return XlAlert(text, kOkAndCancel);
}

template <typename Event>
class Teller final : public CXlStaticEventObserver<typename Event::Args> {
 public:
  using Args = typename Event::Args;

  explicit Teller(const char16_t* name)
      : CXlStaticEventObserver<Args>(State().static_observers.Of<Event>()), name_(name) {}

  void Notify(Args& args) override {
    std::u16string text = name_;
    if constexpr (requires { args.workbook; }) text += u" workbook=" + args.workbook;
    if constexpr (requires { args.sheet; }) text += u" sheet=" + args.sheet;
    if constexpr (requires { args.range; }) text += u" range=" + args.range;
    if constexpr (requires { args.save_as; }) text += args.save_as ? u" as" : u"";
    if constexpr (requires { args.success; }) text += args.success ? u" done" : u"";
    const bool is_ok = Ask(text);
    if constexpr (requires { args.cancel; }) args.cancel = !is_ok;
  }

 private:
  const char16_t* name_;
};

// Static observers change when others come and go. One object holds them all.
struct Tellers {
  Teller<CXllOpenEvent> open{u"open"};
  Teller<CXllCloseEvent> close{u"close"};
  Teller<CXlRegisterFunctionsEvent> registering{u"register"};
  Teller<CXlNewWorkbookEvent> new_workbook{u"new workbook"};
  Teller<CXlSelectionChangeEvent> selection_change{u"selection change"};
  Teller<CXlBeforeDoubleClickEvent> before_double_click{u"before double click"};
  Teller<CXlBeforeRightClickEvent> before_right_click{u"before right click"};
  Teller<CXlSheetActivateEvent> sheet_activate{u"sheet activate"};
  Teller<CXlSheetDeactivateEvent> sheet_deactivate{u"sheet deactivate"};
  Teller<CXlCalculateEvent> calculate{u"calculate"};
  Teller<CXlSheetChangeEvent> sheet_change{u"sheet change"};
  Teller<CXlWorkbookOpenEvent> workbook_open{u"workbook open"};
  Teller<CXlWorkbookActivateEvent> workbook_activate{u"workbook activate"};
  Teller<CXlWorkbookDeactivateEvent> workbook_deactivate{u"workbook deactivate"};
  Teller<CXlWorkbookBeforeCloseEvent> workbook_before_close{u"workbook before close"};
  Teller<CXlWorkbookBeforeSaveEvent> workbook_before_save{u"workbook before save"};
  Teller<CXlWorkbookNewSheetEvent> workbook_new_sheet{u"workbook new sheet"};
  Teller<CXlAfterCalculateEvent> after_calculate{u"after calculate"};
  Teller<CXlWorkbookAfterSaveEvent> workbook_after_save{u"workbook after save"};
};
Tellers tellers;

}  // namespace
}  // namespace quantiverse
