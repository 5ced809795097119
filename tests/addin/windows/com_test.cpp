// The attachment to Excel's object model with the system's own calls.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "addin/com_impl.h"
#include "addin/entry_points.h"
#include "addin/fake_host.h"
#include "addin/windows/com_exports.h"
#include "addin/xlapp.h"
#include "fake_excel.h"

namespace quantiverse {
namespace {

using Log = std::vector<std::string>;
constexpr auto kAdviseLimit = static_cast<HRESULT>(0x80040201);

// What CALL would do, in an Excel that has loaded the add-in.
void CallExport(const std::u16string& text) {
  if (text.find(u"xlCheckInstance") != std::u16string::npos) xlCheckInstance();
}

// The observer function, as Excel calls it by its name.
bool RunObserver(DISPPARAMS& parameters) {
  EXPECT_EQ(TextOfBstr(V_BSTR(&parameters.rgvarg[parameters.cArgs - 1])), u"xll_My_observer");
  CXlOper texts[2];
  for (UINT i = 0; i + 2 < parameters.cArgs; ++i) {
    const VARIANT& variant = parameters.rgvarg[parameters.cArgs - 3 - i];
    if (V_VT(&variant) == VT_BSTR) texts[i] = TextOfBstr(V_BSTR(&variant));
  }
  const XLOPER12* const result =
      CXlApp_ObserverEventHandler12(V_I4(&parameters.rgvarg[parameters.cArgs - 2]),
                                    texts[0].Get<XLOPER12>(), texts[1].Get<XLOPER12>(), nullptr);
  return result->val.xbool != 0;
}

class DoubleClicks final : public CXlEventObserver<CXlCancellableRangeEventArgs> {
 public:
  void Notify(CXlCancellableRangeEventArgs& args) override {
    told.push_back(NarrowText(args.sheet + u'!' + args.range));
    args.cancel = cancels;
  }
  Log told;
  bool cancels = true;
};

class Com : public ExcelTest {
 protected:
  Com() {
    EXPECT_GE(CoInitialize(nullptr), 0);
    host.answers[xlGetName] = {{"C:\\AddIns\\My.xll"}};
    for (const int function : {xlfRegister, xlfUnregister, xlfSetName}) {
      host.answers[function] = {{7.0}};
    }
    for (const int function : {xlcNew, xlcClose, xlcEcho}) host.answers[function] = {{true}};
    app->Open();
    excel.properties = {{u"Application", &excel},     {u"DisplayAlerts", true},
                        {u"ExecuteExcel4Macro", {}},  {u"Run", {}},
                        {u"ActiveWorksheet", &sheet}, {u"OnCalculate", u"theirs"},
                        {u"OnSheetActivate", u""},    {u"OnSheetDeactivate", u""}};
    sheet.properties = {{u"Name", u"Sheet1"}, {u"AddressLocal", u"$A$1"}};
  }
  ~Com() override {
    app.reset();
    CoUninitialize();
  }
  std::string Attach() {
    try {
      return app->AttachCom() != nullptr ? "" : "nothing";
    } catch (const CXlComException& exception) {
      return exception.what();
    }
  }
  HRESULT Fire(DISPID id, DISPPARAMS* parameters) {
    return excel.sink->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, parameters, nullptr, nullptr,
                              nullptr);
  }

  FakeObject excel;
  FakeObject sheet;
  std::unique_ptr<CXllApp> app = std::make_unique<CXllApp>();
};

// Excel's windows, the child of which gives its object to whoever asks.
class ComWindow : public Com {
 protected:
  ComWindow() {
    asked = &excel;
    WNDCLASSW window_class{};
    window_class.lpfnWndProc = DefWindowProcW;
    window_class.lpszClassName = L"XLMAIN";
    RegisterClassW(&window_class);
    window_class.lpfnWndProc = AnswerObject;
    window_class.lpszClassName = L"EXCEL7";
    RegisterClassW(&window_class);
    main_window = CreateWindowW(L"XLMAIN", L"", 0, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
    const auto low_word = static_cast<std::uint16_t>(reinterpret_cast<std::uintptr_t>(main_window));
    host.answers[xlGetHwnd] = {{static_cast<std::int32_t>(low_word)}};
  }
  ~ComWindow() override {
    app->OnDetach();
    DestroyWindow(main_window);
  }
  void OpenWorkbook() {
    // Not a child of its own: Excel has a desk between them.
    HWND desk =
        CreateWindowW(L"STATIC", L"", WS_CHILD, 0, 0, 9, 9, main_window, nullptr, nullptr, nullptr);
    CreateWindowW(L"EXCEL7", L"", WS_CHILD, 0, 0, 9, 9, desk, nullptr, nullptr, nullptr);
  }
  static LRESULT CALLBACK AnswerObject(HWND window, UINT message, WPARAM w, LPARAM l) {
    if (message != WM_GETOBJECT || static_cast<LONG>(l) != -16) {
      return DefWindowProcW(window, message, w, l);
    }
    return asked != nullptr ? LresultFromObject(IID_IDispatch, w, asked) : 0;
  }

  static inline IDispatch* asked = nullptr;
  HWND main_window = nullptr;
};

TEST_F(ComWindow, EventsTravelThereAndBack) {
  OpenWorkbook();
  DoubleClicks observer;
  excel.on_run = [this](DISPPARAMS& parameters) {
    EXPECT_EQ(std::get<bool>(excel.properties[u"DisplayAlerts"]), false);
    return RunObserver(parameters);
  };
  app->Events().Get<CXlBeforeDoubleClickEvent>().AddObserver(observer);
  ASSERT_TRUE(excel.sink);

  VARIANT_BOOL cancel = VARIANT_FALSE;
  const auto fire = [&](auto... arguments) {
    Variants variants;
    (variants.Add(arguments), ...);
    DISPPARAMS parameters = variants.Parameters();
    return Fire(1559, &parameters);
  };
  IDispatch* const object = &sheet;
  EXPECT_EQ(fire(object, object, &cancel), S_OK);
  EXPECT_EQ(observer.told, Log{"Sheet1!$A$1"});
  EXPECT_EQ(cancel, VARIANT_TRUE);
  observer.cancels = false;
  EXPECT_EQ(fire(object, static_cast<IDispatch*>(nullptr), &cancel), S_OK);
  EXPECT_EQ(observer.told.back(), "Sheet1!");
  EXPECT_EQ(cancel, VARIANT_FALSE);
  EXPECT_EQ(std::get<bool>(excel.properties[u"DisplayAlerts"]), true);

  EXPECT_EQ(Fire(1559, nullptr), DISP_E_PARAMNOTFOUND);
  EXPECT_EQ(fire(object, &cancel), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(fire(object, true, &cancel), DISP_E_TYPEMISMATCH);
  DISPPARAMS none{};
  EXPECT_EQ(Fire(1, &none), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Fire(1554, &none), S_OK);

  // A sink that outlives the attachment tells nobody.
  const ComPointer<IDispatch> kept = excel.sink;
  app->OnDetach();
  EXPECT_FALSE(excel.sink);
  EXPECT_EQ(kept->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr), S_OK);
  EXPECT_EQ(excel.references, 1U);
}

TEST_F(ComWindow, WorkbookIsMadeToAskIt) {
  EXPECT_EQ(Attach(), "EnumChildWindows");
  Log commands;
  host.on_call = [&](int function) {
    if (function == xlcNew) OpenWorkbook();
    if (function == xlcNew || function == xlcClose) commands.push_back(std::to_string(function));
  };
  EXPECT_EQ(Attach(), "");
  EXPECT_EQ(commands, (Log{"32887", "32784"}));
}

TEST_F(ComWindow, FailingStepIsTold) {
  OpenWorkbook();
  asked = nullptr;
  EXPECT_EQ(Attach().substr(0, 39), "AccessibleObjectFromWindow failed with ");
  asked = &sheet;
  EXPECT_EQ(Attach(), "GetIDsOfNames failed with error code 0x80020006");
  asked = &excel;
  excel.advise_result = kAdviseLimit;
  EXPECT_EQ(Attach(), "AtlAdvise failed with error code 0x80040201");
  EXPECT_EQ(excel.references, 2U);  // attached all the same
}

// A running object table has room for all programs of a session, so this is all one test.
TEST_F(Com, SearchFindsTheRightExcel) {
  const CLSID id = {
      0x51C0FFEE, 1, 2, {3, 4, 5, 6, 7, 8, 9, static_cast<BYTE>(GetCurrentProcessId())}};
  constexpr const wchar_t* kKey = L"Excel.Application.5";
  SetVersion(7);
  RegDeleteTreeW(HKEY_CLASSES_ROOT, kKey);
  EXPECT_EQ(Attach(),
            "CLSIDFromProgID(\"Excel.Application.5\", ...) failed with error 0x800401F3 failed "
            "with error code 0x800401F3");
  wchar_t text[40];
  const int size = StringFromGUID2(id, text, 40) * static_cast<int>(sizeof(wchar_t));
  RegSetKeyValueW(HKEY_CLASSES_ROOT, L"Excel.Application.5\\CLSID", nullptr, REG_SZ, text,
                  static_cast<DWORD>(size));
  EXPECT_EQ(Attach(),
            "GetActiveObject(\"Excel.Application.5\") failed with error 0x800401E3 failed with "
            "error code 0x800401E3");

  // The active one hasn't loaded the add-in; a workbook of the other leads to the right one.
  FakeObject other;
  other.properties = {{u"Application", &other}, {u"ExecuteExcel4Macro", {}}};
  FakeObject workbook;
  workbook.properties = {{u"Application", &excel}};
  excel.on_macro_text = CallExport;
  DWORD active = 0;
  ASSERT_EQ(RegisterActiveObject(Plain(other), id, ACTIVEOBJECT_WEAK, &active), S_OK);
  EXPECT_EQ(Attach(), "Failed to find running application");
  {
    ComPointer<IRunningObjectTable> table;
    ASSERT_EQ(GetRunningObjectTable(0, table.Receive()), S_OK);
    ComPointer<IMoniker> moniker;
    ASSERT_EQ(CreateFileMoniker(L"C:\\AddIns\\Book of a test.xls", moniker.Receive()), S_OK);
    DWORD running = 0;
    ASSERT_EQ(table->Register(0, Plain(workbook), moniker.Get(), &running), S_OK);
    EXPECT_EQ(Attach(), "");
    EXPECT_TRUE(excel.sink);
    app->OnDetach();
    table->Revoke(running);
  }
  RevokeActiveObject(active, nullptr);

  // The right one is active.
  ASSERT_EQ(RegisterActiveObject(Plain(excel), id, ACTIVEOBJECT_WEAK, &active), S_OK);
  EXPECT_EQ(Attach(), "");
  app->OnDetach();
  RevokeActiveObject(active, nullptr);
  RegDeleteTreeW(HKEY_CLASSES_ROOT, kKey);
}

TEST_F(ComWindow, OldStyleMacrosCallOn) {
  for (const auto macro : {CXllComImpl_OnCalculate, xlCheckInstance}) EXPECT_EQ(macro(), 1);
  OpenWorkbook();
  Log called;
  excel.on_run = [&called](DISPPARAMS& parameters) {
    called.push_back(NarrowText(TextOfBstr(V_BSTR(&parameters.rgvarg[0]))));
    return false;
  };
  excel.on_macro_text = [&called](const std::u16string& text) {
    called.push_back(NarrowText(text));
  };
  app->Events().Forwarding().SetMacro(4, u"activated");
  app->Events().Forwarding().SetMacro(6, u"calculated");
  XlComFailure failure;
  ASSERT_NE(app->AttachCom(), nullptr);
  ASSERT_TRUE(app->AttachCom()->Connect(false, failure));
  SetVersion(5);  // it needs no windows for what follows
  ASSERT_TRUE(app->AttachCom()->Connect(true, failure));
  EXPECT_EQ(std::get<std::u16string>(excel.properties[u"OnCalculate"]), u"xll_My_OnCalculate");
  EXPECT_EQ(CXllComImpl_OnSheetActivate(), 1);
  EXPECT_EQ(CXllComImpl_OnSheetDeactivate(), 1);
  EXPECT_EQ(CXllComImpl_OnCalculate(), 1);
  EXPECT_EQ(called, (Log{"Sheet1", "", "theirs()"}));
  app->OnDetach();
  EXPECT_EQ(std::get<std::u16string>(excel.properties[u"OnCalculate"]), u"theirs");
}

}  // namespace
}  // namespace quantiverse
