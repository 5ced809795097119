#include "addin/com_impl.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "addin/xlapp.h"
#include "fake_com.h"
#include "fake_host.h"

namespace quantiverse {
namespace {

class XllCom : public ExcelTest {
 protected:
  XllCom() {
    current = &system;
    State().com.find_system = []() -> IXlComSystem* { return current; };
    host.answers[xlGetName] = {{"C:\\AddIns\\My file.xll"}};
    host.answers[xlfRegister] = {{7.0}};
    host.answers[xlGetHwnd] = {{4660}};
    host.answers[xlcNew] = {{true}};
    host.answers[xlcEcho] = {{true}};
    host.answers[xlcClose] = {{true}};
    host.answers[xlfUnregister] = {{true}};
    host.answers[xlfSetName] = {{true}};
    app->Open();
    record.Take();
    application->members[u"Application"] = application;
    application->on_macro = [] { Instance()->OnCheckInstance(); };
    other->members[u"Application"] = other;
    system.active = application;
  }
  ~XllCom() override {
    app.reset();
    // They hold each other.
    application->members.clear();
    other->members.clear();
    State().com.find_system = PlatformComSystem;
  }
  static CXllComImpl* Instance() { return State().com.instance; }

  // The failure's text; empty for none.
  std::string Attach() {
    try {
      EXPECT_NE(app->AttachCom(), nullptr);
      return "";
    } catch (const CXlComException& exception) {
      return exception.what();
    }
  }
  void Refuse(int function) { host.answers[function] = {{0.0, xlretFailed}}; }

  static inline FakeSystem* current = nullptr;

  Record record{host};
  FakeSystem system{record};
  std::shared_ptr<FakeObject> application = std::make_shared<FakeObject>("app", record);
  std::shared_ptr<FakeObject> other = std::make_shared<FakeObject>("other", record);
  std::unique_ptr<CXllApp> app = std::make_unique<CXllApp>();
};

const Log kAdvised = {"CreateInstance", "QueryInterface", "AtlAdvise"};

Log operator+(Log first, const Log& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST_F(XllCom, WindowLeadsToApplication) {
  EXPECT_EQ(Attach(), "");
  EXPECT_EQ(record.Take(), (Log{"CoInitialize", "16392", "main window 4660",
                                "workbook window of 77", "object of 78", "app Application 2048 2"} +
                            kAdvised));
  EXPECT_EQ(Attach(), "");
  EXPECT_EQ(record.Take(), (Log()));  // it is attached already
  app->OnDetach();
  EXPECT_EQ(record.Take(), (Log{"Unadvise"}));
  EXPECT_EQ(Instance(), nullptr);
}

TEST_F(XllCom, WorkbookComesAndGoesWhereNoneIsOpen) {
  system.looks_without_window = 1;
  EXPECT_EQ(Attach(), "");
  const Log made = {"CoInitialize",          "16392",           "main window 4660",
                    "workbook window of 77", "32887: 1.000000", "workbook window of 77"};
  EXPECT_EQ(record.Take(),
            (made + Log{"object of 78", "app Application 2048 2", "32784: false"} + kAdvised));

  app->OnDetach();
  system.looks_without_window = 2;
  EXPECT_EQ(Attach(), "EnumChildWindows");
  EXPECT_EQ(record.Take(), (Log{"Unadvise"} + made + Log{"32784: false"}));
  system.looks_without_window = 2;
  Refuse(xlcNew);
  EXPECT_EQ(Attach(), "EnumChildWindows");
  EXPECT_EQ(record.Take(), (made));  // nothing to be closed
}

TEST_F(XllCom, FailingStepOfTheWindowRouteIsTold) {
  const char* const cases[][2] = {
      {"CoInitialize", "CoInitialize failed with error code 0x80004005"},
      {"object of 78", "AccessibleObjectFromWindow failed with error code 0x80004005"},
      {"find Application", "GetIDsOfNames failed with error code 0x80004005"},
      {"app Application 2048 2", "Invoke failed with error code 0x80004005"},
      {"CreateInstance", "CreateInstance failed with error code 0x80004005"},
      {"QueryInterface", "QueryInterface failed with error code 0x80004005"},
      {"AtlAdvise", "AtlAdvise failed with error code 0x80004005"},
  };
  for (const auto& [failing, text] : cases) {
    record.failing = {failing};
    EXPECT_EQ(Attach(), text);
    EXPECT_EQ(Instance() != nullptr,
              kAdvised.back() == failing || kAdvised[0] == failing || kAdvised[1] == failing)
        << "found, but not connected";
  }
  record.failing.clear();
  application->members[u"Application"] = true;
  app->OnDetach();
  EXPECT_EQ(Attach(), "Invoke");  // no object, and no code either
  application->members[u"Application"] = application;
  EXPECT_EQ(Attach(), "");
}

TEST_F(XllCom, OneAttachmentAProcess) {
  XlComFailure failure;
  CXllComImpl first(system);
  CXllComImpl second(system);
  EXPECT_FALSE(first.Connect(true, failure));
  {
    CXllComImpl attached(system);
    EXPECT_TRUE(attached.Init(failure));
    for (CXllComImpl* const com : {&attached, &first}) {
      failure = {};
      EXPECT_FALSE(com->Init(failure));
      EXPECT_EQ(failure.text, u"An instance of CXllCom has already been created");
    }
    EXPECT_EQ(Attach(), "An instance of CXllCom has already been created");
  }
  SetVersion(7);
  host.answers[xlcEcho] = {{true}, {0.0, xlretFailed}};
  EXPECT_FALSE(first.Init(failure));  // when the right one had been found
  EXPECT_FALSE(first.Init(failure));
  EXPECT_EQ(failure.text, u"Init() has already been called");
  app.reset();
  EXPECT_FALSE(second.Init(failure));
  EXPECT_EQ(failure.text, u"No CXllApp instance found");
}

TEST_F(XllCom, SearchLeavesExcelAsItWas) {
  SetVersion(7);
  record.Take();
  EXPECT_EQ(Attach(), "");
  const std::string macro = "CALL(\"%C:\\AddIns\\My file.xll\",\"xlCheckInstance\",\"j\")";
  const std::string file = "\"C:\\AddIns\\My file.xll\"";
  EXPECT_EQ(
      record.Take(),
      (Log{"CoInitialize", "16393",
           "149: " + file +
               ", \"xlCheckInstance\", \"J\", \"xlCheckInstance\", \"\", \"2\", \"Private "
               "Macros\", \"\", \"C:\\AddIns\\My file.chm!3\", \"Implementation function "
               "used by library initialisation routines..\"",
           "32909: false", "32887: 6.000000", "class of Excel.Application.5", "GetActiveObject",
           "QueryInterface", "app Application 1024 2",
           "app ExecuteExcel4Macro 1033 2 \"" + macro + '"', "32784: false", "32909: true", "16393",
           "201: 7.000000", "88: \"xlCheckInstance\"",
           "149: " + file + ", \"xlAutoRemove\", \"J\", \"xlCheckInstance\", missing, 0.000000",
           "CoUninitialize"} +
       kAdvised));
  EXPECT_EQ(app->FindFunctionText(u"xlCheckInstance"), nullptr);
  EXPECT_EQ(
      system.traces,
      (Log{"XlpComImpl: IterateRot: Looking for application string 'Excel.Application.5'\n",
           "XlpComImpl: IterateRot: CLSIDFromProgID(Excel.Application.5) returned 0\n",
           "XlpComImpl: IterateRot: Attempting GetApplicationDispID with pDispAnyApp=ab01\n",
           "XlpComImpl: IterateRot: InvokeApplication returned 0\n",
           "XlpComImpl: CallCheckInstance: about to RunExcelMacroFromDisp(" + macro + ")\n"}));
}

TEST_F(XllCom, SearchGoesOnToTheRunningObjects) {
  SetVersion(7);
  const auto closed = std::make_shared<FakeObject>("closed", record);  // has no Application
  for (const char* const failing : {"", "class of Excel.Application.5", "GetActiveObject"}) {
    system.active = other;
    system.running = {nullptr, closed, other, application, closed};
    record.failing = {failing};
    record.Take();
    EXPECT_EQ(Attach(), "");
    EXPECT_EQ(app->AttachCom()->SetDisplayAlerts(true), true);
    EXPECT_EQ(record.Take().back(), "app DisplayAlerts 1024 4 true");
    app->OnDetach();
  }
  // What calls the export outside of a search changes nothing.
  EXPECT_EQ(Attach(), "");
  Instance()->OnCheckInstance();
  app->OnDetach();
  record.failing.clear();
  system.active = other;
  system.running = {other};
  EXPECT_EQ(Attach(), "Failed to find running application");
}

TEST_F(XllCom, FailingStepOfTheSearchIsTold) {
  SetVersion(7);
  const std::string hex = "0x80004005";
  const std::string code = " failed with error code " + hex;
  const std::pair<const char*, std::string> cases[] = {
      {"class of Excel.Application.5",
       "CLSIDFromProgID(\"Excel.Application.5\", ...) failed with error " + hex + code},
      {"GetActiveObject",
       "GetActiveObject(\"Excel.Application.5\") failed with error " + hex + code},
      {"QueryInterface", "QueryInterface(IID_IDispatch) failed with error " + hex + code},
      {"CreateBindCtx", "CreateBindCtx() failed with error " + hex + code},
      {"GetRunningObjectTable", "GetRunningObjectTable() failed with error " + hex + code},
      {"EnumRunning", "EnumRunning() failed with error " + hex + code},
      {"Reset", "Reset() failed with error " + hex + code},
  };
  system.active = other;
  for (const auto& [failing, text] : cases) {
    record.failing = {failing};
    EXPECT_EQ(Attach(), text);
    EXPECT_EQ(record.Take().back(), "CoUninitialize");
    EXPECT_EQ(Instance(), nullptr);
  }
}

// Each leaves no more to be undone than it has done.
TEST_F(XllCom, ExcelMayRefuseAnyStepOfTheSearch) {
  SetVersion(7);
  struct Case {
    std::map<int, FakeHost::Answer> answers;
    const char* text;
    Log commands;
  };
  const FakeHost::Answer refused = {0.0, xlretFailed};
  const Case cases[] = {
      {{{xlfRegister, refused}}, "InitCheckInstance() failed to register callback", {}},
      {{{xlcEcho, refused}},
       "InitExcelOleFix() failed to switch off workbook echo with error 0x20",
       {"32909: false"}},
      {{{xlcNew, refused}},
       "InitExcelOleFix() failed to create new workbook with error 0x20",
       {"32909: false", "32887: 6.000000", "32909: true"}},
      {{{xlcNew, {XlError::kNotAvailable, xlretSuccess}}},
       "InitExcelOleFix() failed to create new workbook with error 0x2A",
       {"32909: false", "32887: 6.000000", "32909: true"}},
      {{{xlcClose, refused}},
       "TermExcelOleFix() failed to close temporary workbook with error 0x20",
       {"32909: false", "32887: 6.000000", "32784: false", "32909: true"}},
  };
  for (const Case& c : cases) {
    const auto before = host.answers;
    for (const auto& [function, answer] : c.answers) host.answers[function] = {answer};
    EXPECT_EQ(Attach(), c.text);
    host.answers = before;
    Log commands;
    for (const std::string& line : record.Take()) {
      if (line.starts_with("32")) commands.push_back(line);
    }
    EXPECT_EQ(commands, c.commands);
    EXPECT_EQ(app->FindFunctionText(u"xlCheckInstance"), nullptr);
  }
  host.answers[xlcEcho] = {{true}, {0.0, xlretFailed}};
  EXPECT_EQ(Attach(), "TermExcelOleFix() failed to restore echo with error %d");
}

TEST_F(XllCom, OldExcelRunsMacrosInPlaceOfEvents) {
  SetVersion(5);
  application->members[u"OnCalculate"] = u"theirs";
  application->members[u"OnSheetDeactivate"] = u"xll_My_file_OnSheetDeactivate";
  EXPECT_EQ(Attach(), "");
  Log log = record.Take();
  EXPECT_EQ(log[log.size() - 7],
            "149: \"C:\\AddIns\\My file.xll\", \"CXllComImpl_OnCalculate\", \"A\", "
            "\"xll_My_file_OnCalculate\", \"\", \"2\", \"User Defined\", \"\", "
            "\"C:\\AddIns\\My file.chm!2\", \"..\"");
  EXPECT_EQ(Log(log.end() - 6, log.end()),
            (Log{"app OnSheetActivate 1024 2",
                 "app OnSheetActivate 1024 4 \"xll_My_file_OnSheetActivate\"",
                 "app OnSheetDeactivate 1024 2",
                 "app OnSheetDeactivate 1024 4 \"xll_My_file_OnSheetDeactivate\"",
                 "app OnCalculate 1024 2", "app OnCalculate 1024 4 \"xll_My_file_OnCalculate\""}));

  application->on_macro = nullptr;
  application->members[u"ActiveWorksheet"] = other;
  other->members[u"Name"] = u"Sheet1";
  for (const int number : {4, 5, 6}) app->Events().Forwarding().SwitchOn(number);
  const auto on_macro = [this](XlOldStyleEvent event) {
    record.Take();
    Instance()->OnOldStyleMacro(event);
    return record.Take();
  };
  const std::string observer = "app Run 1024 1 \"xll_My_file_observer\" ";
  const Log named = {"16393"};
  EXPECT_EQ(on_macro(XlOldStyleEvent::kSheetActivate),
            (named + Log{"app ActiveWorksheet 1024 2", "other Name 1024 2",
                         "app DisplayAlerts 1024 2", observer + "4 \"Sheet1\""}));
  EXPECT_EQ(on_macro(XlOldStyleEvent::kSheetDeactivate),
            (named + Log{"app DisplayAlerts 1024 2", observer + "5 \"\""}));
  EXPECT_EQ(on_macro(XlOldStyleEvent::kCalculate),
            (named + Log{"app DisplayAlerts 1024 2", observer + "6 \"\"",
                         "app ExecuteExcel4Macro 1033 2 \"theirs()\""}));

  app->OnDetach();
  EXPECT_EQ(record.Take(),
            (Log{"app OnSheetActivate 1024 4 \"\"", "app OnSheetDeactivate 1024 4 \"\"",
                 "app OnCalculate 1024 4 \"theirs\""}));
}

TEST_F(XllCom, OldExcelMayRefuseTheMacros) {
  SetVersion(5);
  record.failing = {"app OnCalculate 1024 4 \"xll_My_file_OnCalculate\""};
  EXPECT_EQ(Attach(), "Invoke failed with error code 0x80004005");
  const Log log = record.Take();
  EXPECT_EQ(Log(log.end() - 2, log.end()),
            (Log{"app OnSheetActivate 1024 4 \"\"", "app OnSheetDeactivate 1024 4 \"\""}));
  Instance()->OnOldStyleMacro(XlOldStyleEvent::kCalculate);
  EXPECT_EQ(record.Take(), (Log{"16393"}));  // nothing is connected
  record.failing.clear();
  app->Functions().Clear();
  Refuse(xlfRegister);
  EXPECT_EQ(Attach(), "xlfRegister");
}

TEST_F(XllCom, EventsRunMacrosWithAlertsOff) {
  application->members[u"DisplayAlerts"] = true;
  application->members[u"Run"] = true;
  app->Events().Forwarding().SwitchOn(11);
  app->Events().Forwarding().SetMacro(7, u"changed");
  record.Take();
  const auto book = std::make_shared<FakeObject>("book", record);
  book->members[u"Name"] = u"Book1";
  const CXlComObject workbook(book);
  const XlEventArgument arguments[] = {&workbook};
  EXPECT_TRUE(record.receiver->OnExcelEvent(11, arguments));
  EXPECT_EQ(record.Take(),
            (Log{"book Name 1024 2", "app DisplayAlerts 1024 2", "app DisplayAlerts 1024 4 false",
                 "app Run 1024 1 \"xll_My_file_observer\" 11 \"Book1\" bool",
                 "app DisplayAlerts 1024 4 true"}));
  record.failing = {"app Run 1024 1 \"xll_My_file_observer\" 11 \"Book1\" bool"};
  EXPECT_FALSE(record.receiver->OnExcelEvent(11, arguments));
}

}  // namespace
}  // namespace quantiverse
