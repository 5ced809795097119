#include "text/vectors.h"

#include <gtest/gtest.h>

namespace quantiverse {
namespace {

TEST(Vectors, BothBoundsAreInside) {
  DoubleVector v = dvector(-3, 5);
  EXPECT_EQ(v.first(), -3);
  EXPECT_EQ(v.last(), 5);
  for (long i = -3; i <= 5; ++i) EXPECT_EQ(v[i], 0.0);
  for (long i = -3; i <= 5; ++i) v[i] = static_cast<double>(i);
  for (long i = -3; i <= 5; ++i) EXPECT_EQ(v[i], static_cast<double>(i));
  EXPECT_EQ(ivector(1, 0).last(), 0);  // no element at all
}

TEST(Vectors, EveryPairOfAMatrixIsAPlaceOfItsOwn) {
  DoubleMatrix m = dmatrix(1, 3, -1, 2);
  double next = 1;
  for (long row = 1; row <= 3; ++row) {
    for (long column = -1; column <= 2; ++column) {
      EXPECT_EQ(m[row][column], 0.0);
      m[row][column] = next++;
    }
  }
  next = 1;
  for (long row = 1; row <= 3; ++row) {
    for (long column = -1; column <= 2; ++column) EXPECT_EQ(m[row][column], next++);
  }
}

// What stands on standard error, to the byte.
auto ends_with_message(const std::string& message) {
  return testing::Eq("Numerical Recipes run-time error ...\n" + message +
                     "\n... now exiting to system ...\n\n");
}

TEST(VectorsDeathTest, FailuresEndTheProcess) {
  const auto status = testing::ExitedWithCode(1);
  const long huge = 1L << 61;
  EXPECT_EXIT(nrerror("100 %d"), status, ends_with_message("100 %d"));
  EXPECT_EXIT(ivector(1, huge), status, ends_with_message("Allocation failure in ivector()."));
  EXPECT_EXIT(dvector(1, huge), status, ends_with_message("Allocation failure in dvector()."));
  EXPECT_EXIT(dmatrix(1, 1 << 20, 1, huge >> 20), status,
              ends_with_message("Allocation failure 1 in dmatrix()."));
}

}  // namespace
}  // namespace quantiverse
