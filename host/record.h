#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "host/value.h"
#include "host/xlcall.h"

// Between values and the records of either generation.
namespace quantiverse::host {

// What records point to. Each piece is a block of its own, so that a sanitizer sees a step beyond.
class Memory {
 public:
  // Of `count` objects, zeroed.
  template <class T>
  T* allocate(std::size_t count) {
    Piece piece = std::make_unique<std::byte[]>(count * sizeof(T));
    auto* const start = reinterpret_cast<T*>(piece.get());
    // Most records point to a single text.
    if (first_ == nullptr) {
      first_ = std::move(piece);
    } else {
      others_.push_back(std::move(piece));
    }
    return start;
  }

 private:
  using Piece = std::unique_ptr<std::byte[]>;

  Piece first_;
  std::vector<Piece> others_;
};

// Writes `value` into `record`, and what it points to into `memory`.
// A narrow text is cut at its 255th character.
// false: the generation can't hold the value, such as an array that is too large; `record` is
//        then unchanged, `memory` may not be.
template <class Form>
bool write_record(const Value& value, Record<Form>& record, Memory& memory);

// Copies what `record` holds. Of areas only the first counts.
// false: no value can be read from it, such as a text without a pointer.
template <class Form>
bool read_record(const Record<Form>& record, Value& value);

// The block that a record points to, null for one that holds everything in itself.
template <class Form>
const void* memory_of(const Record<Form>& record);

}  // namespace quantiverse::host
