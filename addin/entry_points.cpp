#include "addin/entry_points.h"

#include <cstring>
#include <string>

#include "addin/addin_state.h"
#include "addin/excel_call.h"
#include "addin/return_block.h"
#include "addin/structured_guard.h"
#include "addin/worksheet_function.h"
#include "addin/workspace.h"
#include "addin/xlapp.h"

namespace quantiverse {
namespace {

template <XlRecord Record>
Record* HandToExcel(CXlOper& value) {
  if constexpr (std::same_as<Record, XLOPER>) {
    return ToXloper(value);
  } else {
    return ToXloper12(value);
  }
}

// All functions go through here.
// body: given the result; gives what SetResult takes.
template <XlRecord Record, typename Body>
Record* Enter(Body body) {
  CXlOper result;
  try {
    RunGuarded([&] { SetResult(result, body(result)); });
  } catch (const CXlRuntimeException& exception) {
    CXllApp* const app = CXllApp::Instance();
    if (app != nullptr) {
      app->OnException(result, exception);
    } else {
      ExceptionToValue(result, exception);
    }
  }
  return HandToExcel<Record>(result);
}

template <XlRecord Record, typename Char>
Record* EnterFunction(double value, const Char* in_units, const Char* out_units) {
  return Enter<Record>([=](CXlOper& result) {
    return QuantiverseBody(result, value, CXlDualString(in_units), CXlDualString(out_units));
  });
}

const CXlOper* RibbonBody(CXlOper& result, const CXlRibbonCallback& callback) {
  CXllApp* const app = CXllApp::Instance();
  if (app != nullptr) result = app->OnRibbonCallback(callback);
  return nullptr;
}

template <XlRecord Record, typename Char>
Record* EnterRibbon(std::int32_t callback, const Char* id, const Char* tag, std::int32_t index,
                    const Char* text, const Char* selected_id, std::int16_t pressed) {
  return Enter<Record>([=](CXlOper& result) {
    return RibbonBody(result, {.callback = callback,
                               .id = CXlDualString(id).Narrow(),
                               .tag = CXlDualString(tag).Narrow(),
                               .index = index,
                               .text = CXlDualString(text).Narrow(),
                               .selected_id = CXlDualString(selected_id).Narrow(),
                               .pressed = pressed != 0});
  });
}

const CXlOper* ObserverBody(CXlOper& result, std::int32_t number, const CXlOper& argument1,
                            const CXlOper& argument2) {
  result = false;
  CXllApp* const app = CXllApp::Instance();
  if (app == nullptr) return nullptr;
  result = app->Events().FireObserved({.number = number,
                                       .text1 = argument1.ToWideText(),
                                       .text2 = argument2.ToWideText(),
                                       .flag2 = argument2.ToBool()});
  return nullptr;
}

// No event has a third argument.
template <XlRecord Record>
Record* EnterObserver(std::int32_t number, const Record* argument1, const Record* argument2) {
  return Enter<Record>([=](CXlOper& result) {
    return ObserverBody(result, number, CXlOper::Borrow(argument1), CXlOper::Borrow(argument2));
  });
}

// The answer for the list of add-ins.
template <XlRecord Record>
Record* ManagerInfo(const Record* action) {
  return Enter<Record>([=](CXlOper& result) -> const CXlOper* {
    constexpr int kName = 1;
    CXllApp* const app = CXllApp::Instance();
    CXlOper asked;
    const int code = CXlOper::Borrow(action).Coerce(xltypeInt, &asked);
    if (app != nullptr && code == xlretSuccess && asked.ToInt() == kName) {
      result = app->DisplayName();
    } else {
      result = XlError::kValue;
    }
    return nullptr;
  });
}

int OpenAddin() {
  FindExcelVersion();
  CXllApp* const app = CXllApp::Instance();
  if (app == nullptr) {
    throw CXlRuntimeException(std::string("No instance of CXllApp has been instantiated."));
  }
  ReadLocaleLetters();
  return app->Open();
}

// Nothing of ours may leave into Excel, which couldn't catch it. Whoever throws on the way out has
// nobody left to tell.
template <typename Body>
int Guarded(int failed, Body body) {
  try {
    return body(CXllApp::Instance());
  } catch (const std::exception&) {
    return failed;
  }
}

void TellOfFailure(const std::exception& exception) {
  CXllApp* const app = CXllApp::Instance();
  constexpr int kErrorSign = 3;
  const std::string name = app != nullptr ? app->NameForMessages() : "Add-in";
  const std::string text = std::string("Unexpected error during initialization:\n") +
                           exception.what() + '\n' + name + " will not be opened";
  XlAlert(text, kErrorSign);
}

}  // namespace

int XLCALL_PASCAL xlAutoOpen() {
  bool& is_opened = State().app.is_opened;
  if (is_opened) return 0;
  try {
    is_opened = OpenAddin() != 0;
  } catch (const std::exception& exception) {
    TellOfFailure(exception);
  }
  if (is_opened) CXllApp::Instance()->OnOpened();
  return is_opened ? 1 : 0;
}

int XLCALL_PASCAL xlAutoClose() {
  return Guarded(1, [](CXllApp* app) {
    if (app != nullptr) app->Close();
    return 1;
  });
}

int XLCALL_PASCAL xlAutoAdd() {
  return Guarded(0, [](CXllApp* app) {
    if (app == nullptr) return 0;
    app->OnBeforeAdd();
    return app->OnAdd() > 0 ? 1 : 0;
  });
}

int XLCALL_PASCAL xlAutoRemove() {
  return Guarded(1, [](CXllApp* app) {
    if (app != nullptr) app->Remove();
    return 1;
  });
}

XLOPER* XLCALL_PASCAL xlAddInManagerInfo(const XLOPER* action) { return ManagerInfo(action); }
XLOPER12* XLCALL_PASCAL xlAddInManagerInfo12(const XLOPER12* action) { return ManagerInfo(action); }

void XLCALL_PASCAL xlAutoFree(XLOPER* record) { AutoFree(record); }
void XLCALL_PASCAL xlAutoFree12(XLOPER12* record) { AutoFree(record); }

int XLCALL_PASCAL SetExcel12EntryPt(MdCallBack12Entry* entry) {
  SetMdCallBack12(entry);
  return 0;
}

XLOPER* XLCALL_PASCAL Quantiverse_4(double value, const char* in_units, const char* out_units) {
  return EnterFunction<XLOPER>(value, in_units, out_units);
}
XLOPER12* XLCALL_PASCAL Quantiverse_12(double value, const char16_t* in_units,
                                       const char16_t* out_units) {
  return EnterFunction<XLOPER12>(value, in_units, out_units);
}

XLOPER* XLCALL_PASCAL Quantiverse_Macro_4() { return Enter<XLOPER>(QuantiverseMacroBody); }
XLOPER12* XLCALL_PASCAL Quantiverse_Macro_12() { return Enter<XLOPER12>(QuantiverseMacroBody); }

XLOPER* XLCALL_PASCAL RibbonCallback_4(std::int32_t callback, const char* id, const char* tag,
                                       std::int32_t index, const char* text,
                                       const char* selected_id, std::int16_t pressed) {
  return EnterRibbon<XLOPER>(callback, id, tag, index, text, selected_id, pressed);
}
XLOPER12* XLCALL_PASCAL RibbonCallback_12(std::int32_t callback, const char16_t* id,
                                          const char16_t* tag, std::int32_t index,
                                          const char16_t* text, const char16_t* selected_id,
                                          std::int16_t pressed) {
  return EnterRibbon<XLOPER12>(callback, id, tag, index, text, selected_id, pressed);
}

XLOPER* XLCALL_PASCAL CXlApp_ObserverEventHandler4(std::int32_t number, const XLOPER* argument1,
                                                   const XLOPER* argument2, const XLOPER*) {
  return EnterObserver(number, argument1, argument2);
}

// The type text promises an XLOPER here as well, and Excel reads one, while whoever calls the
// export itself expects the XLOPER12 that it gives. A bool can be both: the older record's type
// lies where the newer one's value has room to spare.
XLOPER12* XLCALL_PASCAL CXlApp_ObserverEventHandler12(std::int32_t number,
                                                      const XLOPER12* argument1,
                                                      const XLOPER12* argument2, const XLOPER12*) {
  XLOPER12* const result = EnterObserver(number, argument1, argument2);
  if (TypeOf(*result) != xltypeBool) return result;
  static_assert(offsetof(XLOPER, xltype) >= sizeof result->val.xbool &&
                offsetof(XLOPER, xltype) + sizeof(XLOPER::xltype) <= sizeof result->val);
  constexpr decltype(XLOPER::xltype) kType = xltypeBool;
  std::memcpy(reinterpret_cast<char*>(result) + offsetof(XLOPER, xltype), &kType, sizeof kType);
  return result;
}

}  // namespace quantiverse
