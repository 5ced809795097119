#include "addin/exceptions.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "addin/addin_state.h"
#include "addin/host.h"
#include "addin/xloper.h"

namespace quantiverse {
namespace {

TEST(Exceptions, KeepTheTextInBothWidths) {
  const struct {
    std::function<void()> thrown;
    std::string narrow;
    std::u16string wide;
  } cases[] = {
      {[] { throw CXlRuntimeException(kMessageLoadFailure); }, "Add-in Load Failure",
       u"Add-in Load Failure"},
      {[] { throw CXlRuntimeException(kMessageCount); }, "Unknown error", u"Unknown error"},
      {[] { throw CXlRuntimeException("5 \x80, 20 \xB0"); }, "5 \x80, 20 \xB0",
       u"5 \u20AC, 20 \u00B0"},
      // The wide text keeps what the code page lacks.
      {[] { throw CXlRuntimeException(u"5 \u20AC, 7 \u03A9"); }, "5 \x80, 7 ?",
       u"5 \u20AC, 7 \u03A9"},
      {[] { throw CXlStructuredException(kAccessViolation); }, "'C' exception 0xC0000005",
       u"'C' exception 0xC0000005"},
      {[] { throw CXlConversionException(kMessageNumber); }, "Expected number", u"Expected number"},
      {[] { throw CXlIllegalArgumentException(kMessageSourceNotScalar); },
       "Source must be a scalar value", u"Source must be a scalar value"},
      {[] { throw CXlComException(u"Invoke", 0x80020009); },
       "Invoke failed with error code 0x80020009", u"Invoke failed with error code 0x80020009"},
  };
  for (const auto& c : cases) {
    try {
      c.thrown();
      ADD_FAILURE() << "nothing thrown for " << c.narrow;
    } catch (const CXlRuntimeException& exception) {
      EXPECT_EQ(exception.what(), c.narrow);
      EXPECT_EQ(exception.WideWhat(), c.wide) << c.narrow;
    }
  }
}

class CXlDerivedError : public CXlErrorException {
 public:
  using CXlErrorException::CXlErrorException;
};

// What the cell shows, in the form of either generation.
TEST(Exceptions, BecomeValues) {
  for (const bool excel12 : {false, true}) {
    State().excel.is_excel12 = excel12;
    const std::u16string omega = excel12 ? u"\u03A9" : u"?";
    const struct {
      std::function<void()> thrown;
      std::u16string text;
      bool error;
    } cases[] = {
        {[] { throw CXlStructuredException(kAccessViolation); },
         u"#ERROR: 'C' exception 0xC0000005", false},
        {[] { throw CXlRuntimeException(u"{0} 7 \u03A9"); }, u"#ERROR: {0} 7 " + omega, false},
        {[] { throw CXlRuntimeException("20 \xB0"); }, u"#ERROR: 20 \u00B0", false},
        {[] { throw CXlErrorException(XlError::kNotAvailable); }, u"#N/A", true},
        {[] { throw CXlDerivedError(XlError::kValue); }, u"#ERROR: Threw Excel error 0xF", false},
    };
    for (const auto& c : cases) {
      CXlOper result = u"released, which the leak checker sees";
      try {
        c.thrown();
      } catch (const CXlRuntimeException& exception) {
        ExceptionToValue(result, exception);
      }
      EXPECT_EQ(result.ToWideText(), c.text) << excel12;
      EXPECT_EQ(result.IsError(), c.error) << excel12;
      EXPECT_EQ(result.Get<XLOPER12>() != nullptr, excel12);
    }
  }
  State().excel.is_excel12 = false;
}

}  // namespace
}  // namespace quantiverse
