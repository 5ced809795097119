#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <thread>

#include "addin/entry_points.h"
#include "addin/exceptions.h"
#include "addin/return_block.h"
#include "addin/structured_guard.h"
#include "addin/windows/windows.h"
#include "addin/xloper.h"

namespace quantiverse {
namespace {

// 0 for a body that came back.
template <typename Body>
std::uint32_t FaultOf(Body body) {
  try {
    RunGuarded(body);
  } catch (const CXlStructuredException& fault) {
    return fault.Code();
  }
  return 0;
}

volatile int zero = 0;
volatile int sink = 0;
int* volatile bad = reinterpret_cast<int*>(16);

int UseUpStack(volatile char* above) {
  volatile char more[4096];
  more[0] = *above;
  return more[0] == 1 ? 0 : UseUpStack(more) + more[0];
}

TEST(Guard, FaultsBecomeExceptions) {
  EXPECT_EQ(FaultOf([] { sink = *bad; }), kAccessViolation);
  EXPECT_EQ(FaultOf([] { *bad = 1; }), kAccessViolation);
  EXPECT_EQ(FaultOf([] { sink = static_cast<int>(strlen(reinterpret_cast<char*>(bad))); }),
            kAccessViolation);
  EXPECT_EQ(FaultOf([] { reinterpret_cast<void (*)()>(bad)(); }), kAccessViolation);
  EXPECT_EQ(FaultOf([] { sink = sink / zero; }), EXCEPTION_INT_DIVIDE_BY_ZERO);
  EXPECT_EQ(FaultOf([] { RaiseException(0xC0001234, 0, 0, nullptr); }), 0xC0001234);
  EXPECT_EQ(FaultOf([] {}), 0u);
}

TEST(Guard, LetsExceptionsOfCxxPass) {
  EXPECT_THROW(RunGuarded([] { throw std::out_of_range("x"); }), std::out_of_range);
  EXPECT_THROW(RunGuarded([] { throw CXlConversionException(kMessageNumber); }),
               CXlConversionException);
  // A handler of the body's own comes first.
  EXPECT_EQ(FaultOf([] {
              try {
                throw 1;
              } catch (int) {
                sink = *bad;
              }
            }),
            kAccessViolation);
}

TEST(Guard, NestsAndRepeatsOnEveryThread) {
  const auto fault_often = [] {
    for (int i = 0; i < 2000; ++i) {
      int inner = 0;
      const auto outer = FaultOf([&] {
        inner = static_cast<int>(FaultOf([] { sink = *bad; }) == kAccessViolation);
        RaiseException(0xC0000094, 0, 0, nullptr);
      });
      ASSERT_EQ(inner, 1);
      ASSERT_EQ(outer, 0xC0000094);
    }
  };
  std::thread other(fault_often);
  fault_often();
  other.join();
}

// The page below the stack that faults when the stack grows is made anew: it can happen twice.
TEST(Guard, StackOverflowIsOneOfThem) {
  std::thread([] {
    for (int i = 0; i < 2; ++i) {
      char first = 0;
      EXPECT_EQ(FaultOf([&] { sink = UseUpStack(&first); }), EXCEPTION_STACK_OVERFLOW);
    }
  }).join();
}

// What a cell shows of a worksheet call that touches memory which isn't there, and of the calls
// after it.
TEST(Guard, CellShowsTheFault) {
  ASSERT_TRUE(AttachReturnBlocks());
  const auto* const no_text = reinterpret_cast<const char16_t*>(16);
  for (int i = 0; i < 100; ++i) {
    XLOPER12* const fault = Quantiverse_12(1.0, no_text, u"m");
    EXPECT_EQ(CXlOper::Borrow(fault).ToWideText(), u"#ERROR: 'C' exception 0xC0000005");
    xlAutoFree12(fault);
    ReturnBlock().is_calculating = i % 2 != 0;  // as if it had come later
    XLOPER12* const value = Quantiverse_12(5.0, u"ft", u"m");
    EXPECT_EQ(value->xltype & 0xFFF, xltypeMulti);
    EXPECT_DOUBLE_EQ(value->val.array.lparray[0].val.num, 1.524);
    xlAutoFree12(value);
  }
  DetachReturnBlocks();
}

}  // namespace
}  // namespace quantiverse
