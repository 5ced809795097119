#include "addin/xloper_convert.h"

#include <string>

#include "fake_host.h"

namespace quantiverse {
namespace {

using XlForms = ExcelTest;

// A record of one form, shown in the other; "fails".
template <XlRecord To, XlRecord From>
std::string ShowConverted(const From& from) {
  To to{};
  if (!ConvertRecord(from, to)) return to.xltype == 0 ? "fails" : "fails and leaves something";
  const std::string shown = Show(to);
  FreeContents(to);
  return shown;
}

TEST_F(XlForms, Conversions) {
  struct Case {
    CXlOper value;
    const char* older;  // as an XLOPER
  };
  const Case cases[] = {
      {1.5, "1.500000"},
      {true, "true"},
      {XlError::kNumber, "#36"},
      {-32768, "-32768"},
      {32768, "32768.000000"},
      {XlNil{}, "nil"},
      {"text", "\"text\""},
      {SingleRef({0, 65535, 0, 255}), "sref R0:65535C0:255"},
      {SingleRef({0, 65536, 0, 0}), "fails"},
      {SingleRef({0, 0, 0, 256}), "fails"},
      {SingleRef({-1, 0, 0, 0}), "fails"},
      {Ref({65535, 65535, 255, 255}), "ref 0 R65535:65535C255:255"},
      {Ref({0, 0, 256, 256}), "fails"},
      {Row({1.5, "a", XlNil{}}), "{1.500000, \"a\", nil}"},
      {Row({"a", SingleRef({0, 0, 0, 999})}), "fails"},
  };
  for (const Case& c : cases) {
    XLOPER12 record{};
    host.Give(c.value, record);
    SCOPED_TRACE(Show(record));
    const std::string older = ShowConverted<XLOPER>(record);
    EXPECT_EQ(older, c.older);
    if (older != "fails") {
      XLOPER converted{};
      ConvertRecord(record, converted);
      EXPECT_EQ(ShowConverted<XLOPER12>(converted), c.older);
      FreeContents(converted);
    }
    host.TakeBack(record);
  }
}

TEST_F(XlForms, ConversionsOfRareTypes) {
  XLOPER12 newer{};
  SetType(newer, xltypeBigData);
  newer.val.bigdata.h.hdata = &newer;
  newer.val.bigdata.cbData = 12345678;
  XLOPER older{};
  EXPECT_TRUE(ConvertRecord(newer, older));
  EXPECT_EQ(TypeOf(older), xltypeBigData);
  EXPECT_EQ(older.val.bigdata.h.hdata, &newer);
  EXPECT_EQ(older.val.bigdata.cbData, 12345678);

  SetType(newer, xltypeFlow);
  SetType(older, xltypeFlow);
  EXPECT_EQ(ShowConverted<XLOPER>(newer), "fails");
  EXPECT_EQ(ShowConverted<XLOPER12>(older), "#15");
  EXPECT_EQ(ShowConverted<XLOPER>(XLOPER12{}), "fails");
  // What a careless host may pass.
  for (const unsigned type : {xltypeStr, xltypeMulti, xltypeRef}) {
    newer = {};
    SetType(newer, type | xlbitXLFree);
    EXPECT_NE(ShowConverted<XLOPER>(newer), "fails") << type;
  }
  XLOPER12 element{};
  newer.val.array = {&element, 0, 3};
  SetType(newer, xltypeMulti);
  EXPECT_EQ(ShowConverted<XLOPER>(newer), "{}");

  // Several areas, and the sheet that they are on.
  MakeAreas(3, 77, older);
  static_cast<XLREF*>(older.val.mref.lpmref->reflct)[2] = {1, 2, 3, 4};
  EXPECT_EQ(ShowConverted<XLOPER12>(older), "ref 77 R0:0C0:0 R0:0C0:0 R1:2C3:4");
  EXPECT_EQ(ShowConverted<XLOPER>(older), "ref 77 R0:0C0:0 R0:0C0:0 R1:2C3:4");
  FreeContents(older);
}

TEST_F(XlForms, LargestArraysFit) {
  CXlOper value;
  ASSERT_TRUE(value.Resize(65536, 2, "x"));
  XLOPER older{};
  ASSERT_TRUE(ConvertRecord(*value.Get<XLOPER12>(), older));
  EXPECT_EQ(SizeOf(older).rows, 65536);
  EXPECT_EQ(TextOf(older.val.array.lparray[131071]), "x");
  FreeContents(older);
  ASSERT_TRUE(value.Resize(65537, 1));
  EXPECT_EQ(ShowConverted<XLOPER>(*value.Get<XLOPER12>()), "fails");
  ASSERT_TRUE(value.Resize(1, 257));
  EXPECT_EQ(ShowConverted<XLOPER>(*value.Get<XLOPER12>()), "fails");
}

}  // namespace
}  // namespace quantiverse
