#include "addin/return_block.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "addin/dual_string.h"
#include "addin/excel_call.h"
#include "addin/exceptions.h"
#include "fake_host.h"

namespace quantiverse {
namespace {

template <typename Record>
class XlReturn : public ExcelTest {
 protected:
  static constexpr bool kIs12 = std::is_same_v<Record, XLOPER12>;
  XlReturn() { SetVersion(kIs12 ? 12 : 11); }

  static Record* Return(CXlOper& value) {
    if constexpr (kIs12) {
      return ToXloper12(value);
    } else {
      return ToXloper(value);
    }
  }
  // What Excel sees, with "free" in front if it is to call the add-in's free function.
  static std::string ShowReturned(CXlOper& value) {
    const Record* const record = Return(value);
    return ((record->xltype & xlbitDLLFree) != 0 ? "free " : "") + Show(*record);
  }
};

using Forms = testing::Types<XLOPER, XLOPER12>;
TYPED_TEST_SUITE(XlReturn, Forms);

TYPED_TEST(XlReturn, EachReturnFreesTheLast) {
  struct Case {
    CXlOper value;
    const char* returned;
  };
  this->SetVersion(this->kIs12 ? 11 : 12);
  const CXlOper other_form = "of the other form";
  this->SetVersion(this->kIs12 ? 12 : 11);
  const Case cases[] = {
      {"text", "free \"text\""},
      {Row({"a", 1.5}), "free {\"a\", 1.500000}"},
      {other_form, "free \"of the other form\""},
      {Ref({0, 1, 2, 3}), "free ref 0 R0:1C2:3"},
      {1.5, "1.500000"},
      {XlMissing{}, "missing"},
      {CXlOper(), "#15"},
  };
  for (const Case& c : cases) {
    CXlOper value = c.value;
    EXPECT_EQ(this->ShowReturned(value), c.returned);
  }
}

TYPED_TEST(XlReturn, MovesWhatIsTheAddInsAndCopiesTheRest) {
  CXlOper array = Row({"a", "b"});
  const auto* const elements = array.template Get<TypeParam>()->val.array.lparray;
  EXPECT_EQ(this->Return(array)->val.array.lparray, elements);

  CXlOper excels;
  this->host.answers[xlfInfo] = {{"Excel's"}};
  EXPECT_EQ(Excel(excels, xlfInfo), xlretSuccess);
  EXPECT_EQ(this->ShowReturned(excels), "free \"Excel's\"");
  EXPECT_EQ(this->host.Out(), 1U);

  array = Row({"a", "b"});
  CXlOper element = array.Element(0, 1);
  EXPECT_EQ(this->ShowReturned(element), "free \"b\"");
  EXPECT_EQ(Show(*array.template Get<TypeParam>()), "{\"a\", \"b\"}");
}

TYPED_TEST(XlReturn, ExcelGivesItBackOrTheThreadEnds) {
  CXlOper first = "first";
  CXlOper second = Row({"second"});
  TypeParam* const record = this->Return(first);
  AutoFree(record);
  AutoFree(record);  // nothing is left to free
  AutoFree(static_cast<TypeParam*>(nullptr));
  EXPECT_EQ(this->Return(second), record);
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int round = 0; round < 100; ++round) {
        CXlOper value = "of a thread that ends";
        EXPECT_EQ(TestFixture::ShowReturned(value), "free \"of a thread that ends\"");
      }
      EndThread();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(State().return_blocks.first, &ReturnBlock());
  EXPECT_EQ(ReturnBlock().next, nullptr);  // the only one left
  DetachThreadsReturnBlock();
  EXPECT_EQ(State().return_blocks.first, nullptr);
  CXlOper third = "freed with the library";
  this->Return(third);
}

TYPED_TEST(XlReturn, ResultOfABody) {
  CXlOper result = "own";
  SetResult(result, nullptr);
  SetResult(result, &result);
  EXPECT_EQ(result.ToText(), "own");
  ReturnBlock().common = "common";
  SetResult(result, &ReturnBlock().common);
  EXPECT_EQ(result.ToText(), "common");
  EXPECT_EQ(this->ShowReturned(result), "free \"common\"");
  EXPECT_EQ(ReturnBlock().common.ToText(), "common");
  const CXlOper other = 1.0;
  EXPECT_THROW(SetResult(result, &other), CXlIllegalArgumentException);
}

using ReturnBlockTest = ExcelTest;

TEST_F(ReturnBlockTest, TooLargeForTheForm) {
  CXlOper value;
  value.Resize(65537, 1);
  EXPECT_EQ(Show(*ToXloper(value)), "#15");
}

TEST_F(ReturnBlockTest, NeedsASlot) {
  DetachReturnBlocks();
  EXPECT_THROW(ReturnBlock(), std::bad_alloc);
}

TEST(DualString, MakesTheMissingWidth) {
  struct Case {
    const char* narrow;
    const char16_t* wide;
    bool both_ways = true;
  };
  const Case cases[] = {
      {"", u""},
      {"m/s", u"m/s"},
      {"\xB5m", u"\u00B5m"},
      {"m\xB2", u"m\u00B2"},
      {"\x80\x85\x9F\xB5\xFF", u"\u20AC\u2026\u0178\u00B5\u00FF"},
      {"\x81\x8D\x8F\x90\x9D", u"\u0081\u008D\u008F\u0090\u009D"},
      {"???", u"\u03A9\u0100\u0080", false},
  };
  for (const Case& c : cases) {
    EXPECT_STREQ(CXlDualString(c.wide).Narrow(), c.narrow);
    std::string line = "5 ";
    CXlDualString(c.wide).AppendNarrow(line);
    EXPECT_EQ(line, std::string("5 ") + c.narrow);
    if (c.both_ways) {
      EXPECT_EQ(CXlDualString(c.narrow).Wide(), std::u16string(c.wide));
    }
  }
  EXPECT_STREQ(CXlDualString(static_cast<const char16_t*>(nullptr)).Narrow(), "");

  const char* const argument = "borrowed";
  EXPECT_EQ(CXlDualString(argument).Narrow(), argument);
  EXPECT_STREQ(CXlDualString(std::u16string(u"owned")).Narrow(), "owned");
  const CXlDualString owned{std::string("owned")};
  EXPECT_EQ(owned.Wide(), owned.Wide());  // made once
  const CXlDualString copy = owned;
  EXPECT_NE(copy.Wide(), owned.Wide());
  EXPECT_EQ(copy.Wide(), std::u16string(u"owned"));
}

}  // namespace
}  // namespace quantiverse
