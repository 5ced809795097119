#include "addin/excel_call.h"

#include <string>
#include <vector>

#include "addin/addin_state.h"
#include "addin/workspace.h"
#include "fake_host.h"

namespace quantiverse {
namespace {

using Calls = std::vector<std::string>;

class ExcelCall : public ExcelTest {
 protected:
  // A value of the older generation, and back to the running one.
  template <typename Value>
  static CXlOper Older(const Value& value) {
    SetVersion(11);
    CXlOper older = value;
    SetVersion(15);
    return older;
  }
};

TEST_F(ExcelCall, ConvertsArgumentsToTheFormOfTheCall) {
  CXlOper array;
  array.Resize(1, 2, "x");
  const CXlOper arguments[] = {"newer", Older("older"), 1.5, Older(true), array, XlMissing{}};
  std::vector<std::string> before;
  for (const CXlOper& argument : arguments) before.push_back(Show(argument));
  host.answers[xlfInfo] = {{1.0}};
  const std::string shown = R"( 244: "newer", "older", 1.500000, true, {"x", "x"}, missing)";
  for (const auto& [mode, entry, form] : {std::tuple{XlMode::k12, "MdCallBack12", "12 "},
                                          {XlMode::k4, "Excel4v", "4 "},
                                          {XlMode::kRunning, "MdCallBack12", "12 "}}) {
    CXlOper result = "old";
    EXPECT_EQ(RegisterExcel(result, mode, xlfInfo, arguments), xlretSuccess);
    EXPECT_EQ(host.TakeCalls(), Calls{entry + shown});
    EXPECT_EQ(Show(result), std::string(form) + "1.000000");
  }
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_EQ(Show(arguments[i]), before[i]);
}

TEST_F(ExcelCall, RefusesWhatCannotBeCalled) {
  CXlOper large;
  large.Resize(70000, 1);
  const std::vector<CXlOper> many(31, CXlOper(1.0));
  struct Case {
    int version;
    XlMode mode;
    std::vector<CXlOper> arguments;
    int code;
  };
  const Case cases[] = {
      {15, XlMode::k4, many, 256},
      {11, XlMode::kRunning, many, 256},
      {15, XlMode::k12, many, 0},
      {15, XlMode::k4, {many.begin(), many.begin() + 30}, 0},
      {11, XlMode::k12, {}, 256},
      {15, XlMode::k4, {"converted before", large}, 256},
      {15, XlMode::k12, {"before", large}, 0},
      {15, XlMode::k12, {"before", CXlOper()}, 8},
      {15, XlMode::k4, {"before", CXlOper(), large}, 8},
      {15, XlMode::k4, {"before", large, CXlOper()}, 256},
  };
  host.answers[xlfInfo] = {{"answer"}};
  for (const Case& c : cases) {
    SetVersion(c.version);
    CXlOper result = "old";
    EXPECT_EQ(RegisterExcel(result, c.mode, xlfInfo, c.arguments), c.code);
    EXPECT_EQ(host.TakeCalls().size(), c.code == 0 ? 1U : 0U);
    EXPECT_EQ(result.ToText(), c.code == 0 ? "answer" : "old");
  }
  CXlOper result;
  EXPECT_EQ(ExcelV(result, XlMode::k12, xlfInfo, {nullptr}), xlretInvXloper);
}

TEST_F(ExcelCall, ResultsGoBackToExcel) {
  for (const int version : {11, 15}) {
    SetVersion(version);
    host.answers[xlfInfo] = {{"first"}, {"second"}, {1.0, 32}, {"dropped"}};
    CXlOper result = "old";
    EXPECT_EQ(Excel(result, xlfInfo), xlretSuccess);
    EXPECT_EQ(Excel(result, xlfInfo, result, "argument"), xlretSuccess);  // an argument itself
    EXPECT_TRUE(host.TakeCalls().back().ends_with(": \"first\", \"argument\""));
    EXPECT_EQ(Excel(result, xlfInfo), 32);
    EXPECT_EQ(result.ToText(), "second");  // a failed call leaves it
    EXPECT_EQ(XlCommand(xlfInfo, 1, "two"), xlretSuccess);
    EXPECT_EQ(host.Out(), 1U);
  }
}

TEST_F(ExcelCall, SeeksTheNewerEntryUntilItIsKnown) {
  CXlOper result;
  host.answers[xlfInfo] = {{1.0}};
  host.exports_callback12 = false;
  EXPECT_EQ(Excel(result, xlfInfo), xlretFailed);
  host.exports_callback12 = true;
  EXPECT_EQ(Excel(result, xlfInfo), xlretSuccess);
  host.exports_callback12 = false;
  EXPECT_EQ(Excel(result, xlfInfo), xlretSuccess);

  struct Stranger {
    static int XLCALL_PASCAL Answer(int, int, XLOPER12**, XLOPER12*) { return 77; }
  };
  SetMdCallBack12(Stranger::Answer);  // known already
  EXPECT_EQ(Excel(result, xlfInfo), xlretSuccess);
  State().excel.md_callback12 = nullptr;
  SetMdCallBack12(Stranger::Answer);
  EXPECT_EQ(Excel(result, xlfInfo), 77);
  State().excel.md_callback12 = nullptr;
  host.exports_callback12 = true;
  SetMdCallBack12(Stranger::Answer);  // the export comes first
  EXPECT_EQ(Excel(result, xlfInfo), xlretSuccess);
}

TEST_F(ExcelCall, CountsVariableArguments) {
  XLOPER12 result{};
  XLOPER12 argument{};
  MakeNumber(2.0, argument);
  host.answers[xlfInfo] = {{3.0}};
  EXPECT_EQ(Excel12(xlfInfo, &result, 2, &argument, &argument), xlretSuccess);
  EXPECT_EQ(host.TakeCalls(), Calls{"MdCallBack12 244: 2.000000, 2.000000"});
  EXPECT_EQ(Excel12(xlfInfo, &result, 256), xlretInvCount);
}

TEST_F(ExcelCall, FindsTheVersion) {
  struct Case {
    FakeHost::Answer workspace, coerced;
    int version;
    std::size_t calls;
  };
  const Case cases[] = {
      {{"15.0"}, {15}, 15, 2},    {{"12.0"}, {12}, 12, 2},   {{"11.0"}, {11}, 11, 2},
      {{"15.0", 32}, {15}, 0, 1}, {{"15.0"}, {15, 2}, 0, 2}, {{"15.0"}, {"not an integer"}, 0, 2},
  };
  for (const Case& c : cases) {
    SetVersion(0);
    host.answers[xlfGetWorkspace] = {c.workspace};
    host.answers[xlCoerce] = {c.coerced};
    FindExcelVersion();
    EXPECT_EQ(State().excel.version, c.version);
    EXPECT_EQ(IsExcel12(), c.version >= 12);
    EXPECT_EQ(host.Out(), 0U);
    Calls calls = {"Excel4 186 intl: 2", "Excel4 16386 intl: \"15.0\", 2048"};
    if (c.version != 0) calls[1].replace(20, 4, c.workspace.value.ToText());
    calls.resize(c.calls);
    EXPECT_EQ(host.TakeCalls(), calls);
  }
  SetVersion(11);
  FindExcelVersion();
  EXPECT_EQ(host.TakeCalls(), Calls{});
}

TEST_F(ExcelCall, OutsideOfExcel) {
  State().excel.host = nullptr;  // this test program exports no entries
  for (const int version : {0, 11, 15}) {
    SetVersion(version);
    CXlOper result;
    EXPECT_EQ(Excel(result, xlfInfo, "Release"), xlretFailed);
    FindExcelVersion();
    EXPECT_EQ(State().excel.version, version);
  }
  XLOPER record{};
  FreeExcelResult(record);
#if !defined(_WIN32)  // which has boxes for everyone
  EXPECT_EQ(Host().ShowMessageBox(u"text", u"title", 52), 0);
#endif
}

TEST_F(ExcelCall, Alerts) {
  host.answers[xlcAlert] = {{true}, {false}, {"what?"}, {true, 32}};
  EXPECT_TRUE(XlAlert("Delete?", 1));
  EXPECT_EQ(host.TakeCalls(), Calls{"MdCallBack12 32886: \"Delete?\", 1.000000"});
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(XlAlert("Delete?", 3));
}

TEST_F(ExcelCall, Coerces) {
  host.answers[xlCoerce] = {{12}, {"12"}, {12, 2}, {12}};
  const CXlOper text = "12";
  CXlOper into;
  EXPECT_EQ(text.Coerce(xltypeInt, &into), xlretSuccess);
  EXPECT_EQ(Show(into), "12 12");
  EXPECT_EQ(text.Coerce(xltypeInt, &into), xlretFailed);  // another type than asked for
  EXPECT_EQ(text.Coerce(xltypeInt, nullptr), 2);
  EXPECT_EQ(text.Coerce(xltypeInt, nullptr), xlretSuccess);
  EXPECT_EQ(host.TakeCalls(), Calls(4, "MdCallBack12 16386: \"12\", 2048"));
}

TEST_F(ExcelCall, ActiveCell) {
  const CXlOper cell = Ref({1, 1, 2, 2});
  const CXlOper single = SingleRef({1, 1, 2, 2});
  CXlOper value;
  host.answers[xlfActiveCell] = {{single}, {single}, {single, 32}};
  host.answers[xlCoerce] = {{cell}, {1.0}, {cell}};
  EXPECT_TRUE(value.GetActiveCell());
  EXPECT_EQ(Show(value), "12 ref 0 R1:1C2:2");
  EXPECT_EQ(host.TakeCalls(), (Calls{"MdCallBack12 94", "MdCallBack12 16386: sref R1:1C2:2, 8"}));
  EXPECT_FALSE(value.GetActiveCell());
  EXPECT_FALSE(value.GetActiveCell());
}

class Formula : public ExcelCall {
 protected:
  Formula() {
    host.answers[xlfActiveCell] = {{SingleRef({1, 1, 2, 2})}};
    host.answers[xlCoerce] = {{Ref({1, 1, 2, 2})}};
    host.answers[xlfGetFormula] = {{"=RC[1]"}};
    host.answers[xlfGetCell] = {{true}};
    host.answers[xlfFormulaConvert] = {{"=D2"}};
    host.answers[xlcFormula] = host.answers[xlcFormulaArray] = {{true}};
    EXPECT_EQ(Excel(single, xlfActiveCell), xlretSuccess);
    EXPECT_EQ(single.Coerce(xltypeRef, &reference), xlretSuccess);
    host.TakeCalls();
  }
  CXlOper single;
  CXlOper reference;
  CXlOper formula = "untouched";
  bool in_array = false;
};

constexpr const char* kRef = "ref 0 R1:1C2:2";

TEST_F(Formula, IsRead) {
  EXPECT_TRUE(single.GetFormula(true, formula, in_array, true));
  EXPECT_EQ(formula.ToText(), "=D2");
  EXPECT_TRUE(in_array);
  const std::string entry = "MdCallBack12 ";
  EXPECT_EQ(host.TakeCalls(),
            (Calls{entry + "16386: sref R1:1C2:2, 8", entry + "106 intl: " + kRef,
                   entry + "185: 49.000000, " + kRef,
                   entry + "241 intl: \"=RC[1]\", false, true, missing, " + kRef}));

  host.answers[xlfGetCell] = {{XlError::kName}};
  EXPECT_TRUE(reference.GetFormula(false, formula, in_array, false));
  EXPECT_EQ(formula.ToText(), "=RC[1]");
  EXPECT_FALSE(in_array);
  EXPECT_EQ(host.TakeCalls(), (Calls{entry + "106: " + kRef, entry + "185: 49.000000, " + kRef}));
}

TEST_F(Formula, IsNotReadIfACallFails) {
  for (const int function : {xlCoerce, xlfGetFormula, xlfGetCell, xlfFormulaConvert}) {
    FakeHost::Answer& answer = host.answers[function].front();
    answer.code = xlretFailed;
    EXPECT_FALSE(single.GetFormula(true, formula, in_array, true)) << function;
    EXPECT_EQ(formula.ToText(), "untouched");
    answer.code = xlretSuccess;
  }
  EXPECT_FALSE(CXlOper("A1").GetFormula(true, formula, in_array, true));
}

TEST_F(Formula, IsWritten) {
  EXPECT_TRUE(reference.SetFormula(true, "=D2", false, true));
  EXPECT_EQ(host.TakeCalls(),
            (Calls{std::string("MdCallBack12 241 intl: \"=D2\", true, false, missing, ") + kRef,
                   std::string("MdCallBack12 32864 intl: \"=D2\", ") + kRef}));
  EXPECT_TRUE(reference.SetFormula(false, "=RC", true, false));
  EXPECT_EQ(host.TakeCalls(), Calls{std::string("MdCallBack12 32866: \"=RC\", ") + kRef});

  EXPECT_FALSE(single.SetFormula(false, "=RC", false, false));  // a single reference won't do
  host.answers[xlfFormulaConvert] = {{XlError::kValue}, {"=RC", 32}};
  EXPECT_FALSE(reference.SetFormula(true, "=)", false, true));
  EXPECT_FALSE(reference.SetFormula(true, "=D2", false, true));
  host.answers[xlcFormula] = {{true, 32}};
  EXPECT_FALSE(reference.SetFormula(true, "=RC", false, false));
}

TEST_F(ExcelCall, LocaleLetters) {
  struct Case {
    FakeHost::Answer settings;
    const char* letters;
  };
  const auto settings = [](CXlOper row, CXlOper column) {
    return FakeHost::Answer{Row({1.0, 1.0, 1.0, 1.0, 1.0, row, column})};
  };
  const Case cases[] = {
      {settings("Zeile", std::string("S")), "ZS"},
      {settings("", 5.0), "RC"},
      {{Row({1.0, 1.0, 1.0, 1.0, 1.0, "L"})}, "LC"},
      {{"one"}, "RC"},
      {{"L", 32}, "RC"},
  };
  for (const Case& c : cases) {
    host.answers[xlfGetWorkspace] = {c.settings};
    ReadLocaleLetters();
    EXPECT_EQ((std::string{State().letters.row, State().letters.column}), c.letters);
    EXPECT_EQ((std::u16string{State().letters.wide_row, State().letters.wide_column}),
              WideText(c.letters));
  }
  State().letters = {};
  CXlOper item;
  EXPECT_FALSE(GetWorkspaceItem(-1, item));
  host.answers[xlfGetWorkspace] = {{"alone"}};
  EXPECT_TRUE(GetWorkspaceItem(0, item));
  EXPECT_EQ(item.ToText(), "alone");
}

}  // namespace
}  // namespace quantiverse
