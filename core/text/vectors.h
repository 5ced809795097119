#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quantiverse {

// The end of every failed allocation: writes `message` to standard error and ends the process
// with status 1.
[[noreturn]] void nrerror(std::string_view message);

// Elements whose first index need not be 0; the numerical routines count from 1.
// All elements are zero at first. REQUIRES: every index lies in [first, last].
template <typename T>
class IndexedVector {
 public:
  IndexedVector(long first, long last)
      : first_(first), elements_(static_cast<std::size_t>(last - first + 1)) {}

  T& operator[](long i) { return elements_[static_cast<std::size_t>(i - first_)]; }
  const T& operator[](long i) const { return elements_[static_cast<std::size_t>(i - first_)]; }
  [[nodiscard]] long first() const { return first_; }
  [[nodiscard]] long last() const { return first_ + static_cast<long>(elements_.size()) - 1; }

 private:
  long first_;
  std::vector<T> elements_;
};

// Rows and columns with bounds of their own, in one block: m[row][column].
template <typename T>
class IndexedMatrix {
 public:
  IndexedMatrix(long first_row, long last_row, long first_column, long last_column)
      : first_row_(first_row),
        first_column_(first_column),
        columns_(last_column - first_column + 1),
        elements_(static_cast<std::size_t>((last_row - first_row + 1) * columns_)) {}

  // A row, as something to index by column.
  class Row {
   public:
    Row(T* elements, long first) : elements_(elements), first_(first) {}
    T& operator[](long column) const { return elements_[column - first_]; }

   private:
    T* elements_;
    long first_;
  };
  Row operator[](long row) {
    return Row(elements_.data() + (row - first_row_) * columns_, first_column_);
  }

 private:
  long first_row_;
  long first_column_;
  long columns_;
  std::vector<T> elements_;
};

using IntVector = IndexedVector<int>;
using DoubleVector = IndexedVector<double>;
using DoubleMatrix = IndexedMatrix<double>;

// First to last index, both included. A failed allocation ends in nrerror.
IntVector ivector(long first, long last);
DoubleVector dvector(long first, long last);
DoubleMatrix dmatrix(long first_row, long last_row, long first_column, long last_column);

}  // namespace quantiverse
