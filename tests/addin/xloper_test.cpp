#include "addin/xloper.h"

#include <cmath>
#include <iomanip>
#include <limits>
#include <sstream>
#include <string>
#include <utility>

#include "addin/excel_call.h"
#include "addin/exceptions.h"
#include "fake_host.h"

namespace quantiverse {
namespace {

constexpr int k4 = 11;
constexpr int k12 = 15;

// Every test for both generations, but those that say otherwise.
class XlOper : public ExcelTest, public testing::WithParamInterface<int> {
 protected:
  XlOper() { SetVersion(GetParam()); }
  static bool Is12() { return IsExcel12(); }
  static std::string Form() { return Is12() ? "12 " : "4 "; }
  // The same value as Excel's own.
  CXlOper FromExcel(const CXlOper& value) {
    CXlOper oper;
    host.answers[xlfInfo] = {{value}};
    EXPECT_EQ(Excel(oper, xlfInfo), xlretSuccess);
    host.TakeCalls();
    return oper;
  }
};

INSTANTIATE_TEST_SUITE_P(Generations, XlOper, testing::Values(k4, k12));

// What a conversion throws, "" if it doesn't.
template <typename Action>
std::string Thrown(Action action) {
  try {
    action();
  } catch (const CXlRuntimeException& exception) {
    return exception.what();
  }
  return "";
}

// A conversion's result, or "-" if it fails, which is told in both ways.
template <typename Plain>
std::string Tell(const CXlOper& value, Plain (CXlOper::*to)(bool) const, const std::string& type) {
  const Plain plain = (value.*to)(false);
  const std::string thrown = Thrown([&] { (void)(value.*to)(true); });
  if (!thrown.empty()) {
    EXPECT_EQ(thrown, "Expected " + type);
    EXPECT_EQ(plain, Plain());
    return "-";
  }
  std::ostringstream told;
  told << std::boolalpha << std::setprecision(12) << plain;
  return told.str();
}

struct PlainCase {
  CXlOper value;
  const char* number_bool_integer;
  const char* text = nullptr;  // null for the text itself
};

TEST_P(XlOper, ConvertsToPlainValues) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const PlainCase cases[] = {
      {1.5, "1.5 true 1", "1.500000"},
      {-0.75, "-0.75 true 0", "-0.750000"},
      {0.0, "0 false 0", "0.000000"},
      {2147483647.5, "2147483647.5 true 2147483647", "2147483647.500000"},
      {-2147483648.5, "-2147483648.5 true -2147483648", "-2147483648.500000"},
      {2147483648.0, "2147483648 true -", "2147483648.000000"},
      {-2147483649.0, "-2147483649 true -", "-2147483649.000000"},
      {1e25, "1e+25 true -", "10000000000000000905969664.0000"},
      {-kInfinity, "-inf true -", "-inf"},
      {std::copysign(nan, 1.0), "nan true -", "nan"},
      {true, "1 true 1", "TRUE"},
      {false, "0 false 0", "FALSE"},
      {-7, "-7 true -7", "-7"},
      {0, "0 false 0", "0"},
      {"12 ", "12 true 12"},
      {" \t+1.25e1\r\n", "12.5 true 12"},
      {"-0x1p4", "-16 true -16"},
      {"0.0", "0 false 0"},
      {"-2147483648", "-2147483648 true -2147483648"},
      {"4294967296", "4294967296 true -"},
      {"inf", "inf true -"},
      {"tRuE", "- true -"},
      {"FALSE", "- false -"},
      {"true ", "- - -"},
      {"12x", "- - -"},
      {"0x", "- - -"},
      {"0x-1", "- - -"},
      {"0xinf", "- - -"},
      {"0x1p+-1", "- - -"},
      {"+-1", "- - -"},
      {"- 1", "- - -"},
      {"1e400", "- - -"},
      {"1e-400", "- - -"},
      {" ", "- - -"},
      {"", "- - -"},
      {XlError::kNull, "- - -", "#NULL!"},
      {XlError::kDivisionBy0, "- - -", "#DIV/0!"},
      {XlError::kValue, "- - -", "#VALUE!"},
      {XlError::kReference, "- - -", "#REF!"},
      {XlError::kName, "- - -", "#NAME?"},
      {XlError::kNumber, "- - -", "#NUM!"},
      {XlError::kNotAvailable, "- - -", "#N/A"},
      {static_cast<XlError>(43), "- - -", "-"},
      {XlNil{}, "- - -", "-"},
      {XlMissing{}, "- - -", "-"},
      {CXlOper(), "- - -", "-"},
  };
  for (const PlainCase& c : cases) {
    SCOPED_TRACE(Show(c.value));
    EXPECT_EQ(Tell(c.value, &CXlOper::ToDouble, "number") + ' ' +
                  Tell(c.value, &CXlOper::ToBool, "boolean") + ' ' +
                  Tell(c.value, &CXlOper::ToInt, "number"),
              c.number_bool_integer);
    const std::string text = Tell(c.value, &CXlOper::ToText, "string");
    EXPECT_EQ(text, c.text != nullptr ? c.text : c.value.ToText());
    EXPECT_EQ(c.value.ToWideText(), WideText(c.value.ToText()));
  }
  EXPECT_EQ(CXlOper(std::copysign(nan, -1.0)).ToText(), "nan");
}

TEST_P(XlOper, CutsTextsAndIntegersToTheForm) {
  EXPECT_EQ(CXlOper(std::string(300, 'x')).ToText(), std::string(Is12() ? 300 : 255, 'x'));
  EXPECT_EQ(CXlOper(std::u16string(256, u'x')).ToText(), std::string(Is12() ? 256 : 255, 'x'));
  EXPECT_EQ(CXlOper(u"\u20AC\u4E2D").ToWideText(), Is12() ? u"\u20AC\u4E2D" : u"\u20AC?");
  EXPECT_EQ(CXlOper("\x80\x81\xFF").ToWideText(), u"\u20AC\u0081\u00FF");
  EXPECT_EQ(CXlOper(static_cast<const char*>(nullptr)).ToText(true), "");

  CXlOper value = 1.0;
  EXPECT_EQ(Thrown([&] { value = std::string(65536, 'x'); }), Is12() ? "String is too long" : "");
  EXPECT_EQ(value.IsString(), !Is12());  // a failed assignment leaves the old value
  EXPECT_EQ(CXlOper(std::string(65535, 'x')).ToText().size(), Is12() ? 65535U : 255U);

  EXPECT_EQ(CXlOper(32767).Type(), xltypeInt);
  EXPECT_EQ(CXlOper(32768).Type(), Is12() ? xltypeInt : xltypeNum);
  EXPECT_EQ(CXlOper(-32769).ToInt(), -32769);
}

TEST_P(XlOper, ResizesWithinTheLimits) {
  const int rows = Is12() ? 1048576 : 65536;
  const int columns = Is12() ? 16384 : 256;
  CXlOper value = "kept";
  for (const auto& [r, c] : {std::pair{rows + 1, 1}, {1, columns + 1}, {0, 1}, {1, 0}, {-1, -1}}) {
    EXPECT_FALSE(value.Resize(r, c)) << r << ' ' << c;
  }
  EXPECT_EQ(value.ToText(), "kept");

  int r = 0;
  int c = 0;
  ASSERT_TRUE(value.Resize(rows, 1, true));
  EXPECT_TRUE(value.GetDimensions(r, c));
  EXPECT_EQ(r, rows);
  EXPECT_EQ(c, 1);
  EXPECT_TRUE(value.Element(rows - 1, 0).ToBool());
  EXPECT_EQ(Thrown([&] { value.Element(rows, 0); }), "Index out of range");
  const CXlOper copy = value;
  EXPECT_TRUE(copy.Element(rows - 1, 0).ToBool());
  ASSERT_TRUE(value.Resize(1, columns));
  EXPECT_TRUE(value.ItemOfVector(columns - 1).IsNil());
  EXPECT_EQ(Thrown([&] { (void)value.ItemOfVector(columns); }), "Index out of range");
}

TEST_P(XlOper, FillsAnArrayWithScalarsOnly) {
  CXlOper value;
  for (const CXlOper& init : {CXlOper("text"), CXlOper(2.5), CXlOper(false), CXlOper(3),
                              CXlOper(XlError::kName), CXlOper(XlNil{})}) {
    ASSERT_TRUE(value.Resize(2, 2, init));
    for (int i = 0; i < 4; ++i) EXPECT_EQ(Show(value.Element(i / 2, i % 2)), Show(init));
  }
  const CXlOper array = value;
  for (const CXlOper& init : {array, CXlOper(XlMissing{}), CXlOper()}) {
    EXPECT_EQ(Thrown([&] { value.Resize(1, 1, init); }), "Source must be a scalar value");
  }
  // A text from the other generation.
  SetVersion(Is12() ? k4 : k12);
  const CXlOper other = "other";
  SetVersion(GetParam());
  ASSERT_TRUE(value.Resize(1, 2, other));
  EXPECT_EQ(Show(value), Form() + "{\"other\", \"other\"}");
}

TEST_P(XlOper, AliasesReplaceElements) {
  const std::string form = Form();
  CXlOper value;
  value.Resize(1, 3, "old");
  CXlOper first = value.Element(0, 0);
  first = "text";
  first = "another text";
  CXlOper second = value.Element(0, 1);
  second = 1.5;
  value.Element(0, 1) = "by another alias";
  second = 1.5;
  value.Element(0, 2) = value.Element(0, 0);
  EXPECT_EQ(Show(value), form + "{\"another text\", 1.500000, \"another text\"}");
  value.Element(0, 2) = CXlOper();
  // An alias makes what its array is made of, whatever runs.
  SetVersion(Is12() ? k4 : k12);
  value.Element(0, 1) = "1";
  value.Element(0, 0) = CXlOper(2);
  EXPECT_EQ(Show(value), form + "{2, \"1\", nil}");
  value = value.Element(0, 1);
  EXPECT_EQ(Show(value), form + "\"1\"");
  value.Element(0, 0) = "scalar";
  EXPECT_EQ(value.ToText(), "scalar");
  value = 1.0;
  value.Element(0, 0) = "text for a number";
  EXPECT_EQ(value.ToText(), "text for a number");
}

TEST_P(XlOper, DoesNotWriteIntoExcelsArrays) {
  CXlOper value = FromExcel(Row({"a", 2.0}));
  const CXlOper& reader = value;
  EXPECT_EQ(reader.Element(0, 0).ToText(), "a");
  EXPECT_EQ(host.Out(), 1U);
  value.Element(0, 0) = "b";
  EXPECT_EQ(host.Out(), 0U);
  EXPECT_EQ(Show(value), Form() + "{\"b\", 2.000000}");

  // An answer of Excel's as an element.
  CXlOper element = value.Element(0, 1);
  host.answers[xlfInfo] = {{"15.0"}};
  EXPECT_EQ(Excel(element, xlfInfo), xlretSuccess);
  EXPECT_EQ(Show(value), Form() + "{\"b\", \"15.0\"}");
  EXPECT_EQ(host.Out(), 0U);
}

TEST_P(XlOper, ElementsOfOtherValues) {
  struct Case {
    CXlOper value;
    int row, column;
    const char* thrown;
  };
  CXlOper array;
  array.Resize(2, 3);
  const Case cases[] = {
      {array, 1, 2, ""},
      {array, 2, 0, "Index out of range"},
      {array, 0, 3, "Index out of range"},
      {array, -1, 0, "Index out of range"},
      {array, 0, -1, "Index out of range"},
      {1.5, 0, 0, ""},
      {"text", 0, 1, "Index out of range"},
      {XlError::kName, 0, 0, "Bad XLOPER type"},
      {XlMissing{}, 0, 0, "Bad XLOPER type"},
      {FromExcel(Ref({0, 0, 0, 0})), 0, 0, "Bad XLOPER type"},
      {CXlOper(), 0, 0, "Illegal argument"},
  };
  for (const Case& c : cases) {
    CXlOper writable = c.value;
    EXPECT_EQ(Thrown([&] { (void)c.value.Element(c.row, c.column); }), c.thrown) << Show(c.value);
    EXPECT_EQ(Thrown([&] { writable.Element(c.row, c.column) = "x"; }), c.thrown) << Show(c.value);
  }
  EXPECT_EQ(Thrown([&] { (void)array.ItemOfVector(0); }), "Index out of range");
  EXPECT_EQ(CXlOper("scalar").ItemOfVector(0).ToText(), "scalar");
}

TEST_P(XlOper, Dimensions) {
  struct Case {
    CXlOper value;
    int rows, columns;
    bool vector;
  };
  CXlOper matrix;
  matrix.Resize(3, 2);
  const Case cases[] = {
      {matrix, 3, 2, false},
      {FromExcel(Row({1.0, 2.0})), 1, 2, true},
      {FromExcel(SingleRef({2, 5, 1, 1})), 4, 1, true},
      {FromExcel(Ref({2, 3, 0, 255})), 2, 256, false},
      {FromExcel(SingleRef({3, 2, 0, 0})), 0, 0, false},  // backwards
      {FromExcel(SingleRef({0, 2147483647, 0, 0})), 0, 0, false},
      {"text", 1, 1, true},
      {XlNil{}, 0, 0, false},
      {CXlOper(), 0, 0, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(Show(c.value));
    int rows = -1;
    int columns = -1;
    EXPECT_EQ(c.value.GetDimensions(rows, columns), c.rows != 0);
    EXPECT_EQ(rows, c.rows);
    EXPECT_EQ(columns, c.columns);
    EXPECT_EQ(c.value.IsScalarOrVector(), c.vector);
    EXPECT_EQ(c.value.GetDimensions(rows, columns, false), c.rows != 0 && !c.value.IsString());
  }
}

TEST_P(XlOper, CopiesAreTheirOwn) {
  const CXlOper values[] = {1.5, "text", Row({"a", true, XlNil{}}), Ref({1, 2, 3, 4}),
                            SingleRef({1, 2, 3, 4})};
  for (const CXlOper& value : values) {
    CXlOper copy;
    std::string shown;
    {
      CXlOper excels = FromExcel(value);
      shown = Show(excels);
      copy = excels;
      EXPECT_EQ(host.Out(), copy.Type() == xltypeNum || copy.Type() == xltypeSRef ? 0U : 1U);
    }
    EXPECT_EQ(host.Out(), 0U);
    const CXlOper& same = copy;
    copy = same;
    EXPECT_EQ(Show(copy), shown);
    EXPECT_EQ(Show(CXlOper(copy)), shown);
  }
}

TEST_P(XlOper, BorrowsExcelsArguments) {
  XLOPER record4{};
  XLOPER12 record12{};
  host.Give("argument", record4);
  host.Give("argument", record12);
  {
    CXlOper value4 = CXlOper::Borrow(&record4);
    CXlOper value12 = CXlOper::Borrow(&record12);
    EXPECT_EQ(Show(value4), "4 \"argument\"");
    EXPECT_EQ(Show(value12), "12 \"argument\"");
    value4 = 1.0;
    value12.Element(0, 0) = "changed";
    EXPECT_EQ(Show(CXlOper::Borrow(static_cast<XLOPER*>(nullptr))), "none");
  }
  EXPECT_EQ(Show(record12), "\"argument\"");
  host.TakeBack(record4);
  host.TakeBack(record12);
}

}  // namespace
}  // namespace quantiverse
