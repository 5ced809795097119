#include "addin/worksheet_function.h"

#include <string>
#include <utility>
#include <vector>

#include "addin/exceptions.h"
#include "fake_host.h"

namespace quantiverse {
namespace {

TEST(ScrapeOutput, TakesTheFirstResult) {
  struct Case {
    std::string output;
    double value;
    std::string unit;
  };
  const Case cases[] = {
      {"[  1 ] 5 ft; m\n        = 1.524 m\n\n", 1.524, "m\n\n"},
      {" = 5 \n\n", 5.0, "\n\n"},
      {" = 5 m = 500 cm\n\n", 5.0, "m = 500 cm\n\n"},
      {" = -1.5e+30 kg m\n\n", -1.5e30, "kg m\n\n"},
      {" = [ 1 , 2 , 3 ] m\n\n", 0.0, "1 , 2 , 3 ] m\n\n"},
      {" = inf m\n\n", 0.0, "m\n\n"},
      {"[  1 ] 1 m=2.5; x\n = 7 x\n\n", 2.5, "x\n = 7 x\n\n"},  // the echo comes first
      {"=\n\v\f\r\t+2d2 m", 200.0, "m"},
      {"=3&b c", 3.0, "b&c"},
      {"= 4&b", 4.0, "b"},
      {"= 4 b&c", 4.0, "b&c"},
      {"=  4 b", 4.0, "4 b"},
      {"= 4e b", 4.0, "b"},
      {"=&", 0.0, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.output);
    const CXlScrape scrape = ScrapeOutput(c.output);
    EXPECT_FALSE(scrape.is_error);
    EXPECT_EQ(scrape.value, c.value);
    EXPECT_EQ(scrape.text, c.unit);
  }
}

TEST(ScrapeOutput, TakesErrors) {
  const std::pair<std::string, std::string> cases[] = {
      {"[  1 ] 5\n        ERROR: a = b.\n\n", "ERROR: a = b.\n\n"},
      {" ERROR IN b.\n        ERROR: c", "ERROR: c"},
      {"        ERROR IN b.\n        = 1.5 m\n\n", "ERROR IN b.\n"},
      {" ERROR IN =\n        = 1.5 m\n\n", "E"},
      {" ERROR 12=", ""},
      {" ERROR12=", "ERROR12="},
      {"[  1 ] 5=; s\n        ERROR IN b.\n        = 1.5 m", "ERROR IN b.\n        = 1.5 m"},
  };
  for (const auto& [output, text] : cases) {
    SCOPED_TRACE(output);
    const CXlScrape scrape = ScrapeOutput(output);
    EXPECT_TRUE(scrape.is_error);
    EXPECT_EQ(scrape.text, text);
  }
}

TEST(ScrapeOutput, FaultsWithoutAResult) {
  for (const std::string output : {"", "[  1 ] 5; m\n", " ERROR IN b.", " ERROR1=", " = 5\n", " =5",
                                   "=", "= ", "ERROR: a", "= ERROR"}) {
    SCOPED_TRACE(output);
    try {
      ScrapeOutput(output);
      ADD_FAILURE();
    } catch (const CXlStructuredException& fault) {
      EXPECT_EQ(fault.Code(), 0xC0000005U);
    }
  }
}

class WorksheetFunction : public ExcelTest {
 protected:
  WorksheetFunction() { host.answers[xlfInfo] = {{"15.0"}}; }

  static std::string Convert(double value, const char* in_units, const char* out_units) {
    CXlOper result;
    const auto text = [](const char* units) {
      if (!IsExcel12() || units == nullptr) return CXlDualString(units);
      return CXlDualString(WideText(units));
    };
    EXPECT_EQ(QuantiverseBody(result, value, text(in_units), text(out_units)), nullptr);
    return Show(result);
  }
};

TEST_F(WorksheetFunction, Converts) {
  struct Case {
    double value;
    const char* in_units;
    const char* out_units;
    std::string shown;
  };
  const Case cases[] = {
      {5.0, "ft", "m", R"({1.524000, "m%%"})"},
      {1234567.0, "m", "km", R"({1234.570000, "km%%"})"},
      {5.0, "", "", R"({5.000000, "%%"})"},
      {5.0, nullptr, nullptr, R"({5.000000, "%%"})"},
      {-40.0, "degC", "degF", R"({-40.000000, "degF%%"})"},
      {5.0, "ft", "s", R"({"ERROR IN REQUESTED OUTPUT: 's' is incompatible.%", ""})"},
      {5.0, "ft", "=",
       R"({"ERROR IN REQUESTED OUTPUT: '=' not recognized.%        = 1.524 m%%", ""})"},
      {5.0, "xyzzy", "m", R"({"ERROR: 'xyzzy' undefined.%%", ""})"},
      {5.0, "\xB5", "m",
       "{\"ERROR: Syntax error or undefined variable near or in '\xB5'.%%\", \"\"}"},
      {5.0, "ft; m\nx = 3 m", "cm", R"({1.524000, "m%%[  2 ] x = 3 m; cm%       x = 300 cm%%"})"},
      {1e308, "km", "mm", R"({0.000000, "mm%%"})"},  // the output says "inf"
      {5.0, "ft\n7", "m",
       R"({"ERROR IN REQUESTED OUTPUT: 'm' is incompatible.%        = 7 %%", ""})"},
      // A request that one call leaves open is none of the next one's business.
      {5.0, "ft\nx = 1\nbegin\ny = x^2 + 1\nend\nsolve(y, x)\nq", "m",
       R"({"ERROR: No solution found.  Try a different initial independent value.%%)"
       R"([  5 ] q; m%       ERROR: 'q' undefined.%%", ""})"},
      {5.0, "ft", "m", R"({1.524000, "m%%"})"},
  };
  for (const int version : {11, 15}) {
    SetVersion(version);
    for (const Case& c : cases) {
      std::string shown = Convert(c.value, c.in_units, c.out_units);
      for (char& character : shown) character = character == '\n' ? '%' : character;
      EXPECT_EQ(shown, (version == 11 ? "4 " : "12 ") + c.shown);
    }
  }
}

TEST_F(WorksheetFunction, ServesReleasesUpTo15) {
  const std::pair<FakeHost::Answer, bool> cases[] = {
      {{"15.0"}, true}, {{"16.0"}, false},     {{15.0}, true},   {{15.01}, false},
      {{"9"}, true},    {{"16.0, new"}, true}, {{16, 32}, true}, {{XlError::kNotAvailable}, true},
  };
  for (const auto& [release, served] : cases) {
    host.answers[xlfInfo] = {release};
    EXPECT_EQ(Convert(1.0, "m", "cm"), served
                                           ? "12 {100.000000, \"cm\n\n\"}"
                                           : "12 \"This version of Excel is not supported.  Check "
                                             "https://quantiverse.example\"");
  }
  EXPECT_EQ(host.TakeCalls().front(), "MdCallBack12 244: \"Release\"");
}

TEST_F(WorksheetFunction, MacroInsertsACall) {
  const std::string question =
      "MdCallBack12 32886: \"Delete existing contents in cell?\", 1.000000";
  const std::string find = "94 16386 ";
  const std::string read = "106i 185 241i ";
  const std::string write = "241i 32864i ";
  const std::string wizard = "33218 ";
  struct Case {
    std::string formula;                  // in A1 notation; what the cell holds
    std::vector<FakeHost::Answer> agree;  // to deleting it
    int code_of_read, code_of_write;
    std::string operations;
  };
  const Case cases[] = {
      {"", {}, 0, 0, find + read + read + write + wizard},
      {"", {}, 0, 32, find + read + read + write + wizard},
      {"=1+quantiVERSE(1,\"m\",\"ft\")", {}, 0, 0, find + read + wizard},
      {"=MyQuantiverse2()", {}, 0, 0, find + read + wizard},
      {"5", {{true}}, 0, 0, find + read + read + "32886 " + write + wizard},
      {"5", {{false}}, 0, 0, find + read + read + "32886 "},
      {"5", {{true, 32}}, 0, 0, find + read + read + "32886 "},
      {"5", {}, 32, 0, find + "106i 106i "},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.operations);
    host.answers[xlfActiveCell] = {{SingleRef({1, 1, 2, 2})}};
    host.answers[xlCoerce] = {{Ref({1, 1, 2, 2})}};
    host.answers[xlfGetFormula] = {{c.formula, c.code_of_read}};
    host.answers[xlfGetCell] = {{false}};
    host.answers[xlfFormulaConvert] = {{c.formula}};
    host.answers[xlcAlert] = {c.agree.begin(), c.agree.end()};
    host.answers[xlcFormula] = {{true, c.code_of_write}};
    host.answers[xlcFunctionWizard] = {{true}};
    CXlOper result;
    EXPECT_EQ(QuantiverseMacroBody(result), nullptr);
    EXPECT_EQ(Show(result), "none");
    std::string operations;
    std::string converted;
    std::string asked = question;
    for (const std::string& call : host.TakeCalls()) {
      const std::size_t number = call.find(' ') + 1;
      const std::string operation = call.substr(number, call.find_first_of(" :", number) - number);
      operations += operation + (call.find(" intl") != std::string::npos ? "i " : " ");
      if (operation == "241") converted = call;
      if (operation == "32886") asked = call;
    }
    EXPECT_EQ(operations, c.operations);
    EXPECT_EQ(asked, question);
    if (c.operations.find(write) != std::string::npos) {
      EXPECT_NE(converted.find("\"=Quantiverse()\", true, false"), std::string::npos);
    }
  }
}

TEST_F(WorksheetFunction, MacroNeedsACell) {
  host.answers[xlcAlert] = {{true}};
  EXPECT_FALSE(InsertFunctionInActiveCell("Quantiverse"));
  EXPECT_EQ(host.TakeCalls(),
            (std::vector<std::string>{
                "MdCallBack12 94",
                "MdCallBack12 32886: \"Please select a cell for the result and try again.\", "
                "3.000000"}));
}

}  // namespace
}  // namespace quantiverse
