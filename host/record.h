#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/value.h"
#include "host/xlcall.h"

// Between values and the records of either generation.
namespace quantiverse::host {

// What records point to. Each piece is a block of its own, so that a sanitizer sees a step beyond.
class Memory {
 public:
  // Of `count` objects: records are zeroed, characters are to be written.
  template <class T>
  T* allocate(std::size_t count) {
    const std::size_t size = count * sizeof(T);
    Piece piece = std::is_integral_v<T> ? std::make_unique_for_overwrite<std::byte[]>(size)
                                        : std::make_unique<std::byte[]>(size);
    auto* const start = reinterpret_cast<T*>(piece.get());
    for (Piece& place : first_) {
      if (place != nullptr) continue;
      place = std::move(piece);
      return start;
    }
    others_.push_back(std::move(piece));
    return start;
  }

 private:
  using Piece = std::unique_ptr<std::byte[]>;

  std::array<Piece, 2> first_;  // the few that most records and calls have take no vector
  std::vector<Piece> others_;
};

// Writes `value` into `record`, and what it points to into `memory`.
// A narrow text is cut at its 255th character.
// false: the generation can't hold the value, such as an array that is too large; `record` is
//        then unchanged, `memory` may not be.
template <class Form>
bool write_record(const Value& value, Record<Form>& record, Memory& memory);

// Copies what `record` holds. Of areas only the first counts.
// false: no value can be read from it, such as a text without a pointer; `value` is of no use.
template <class Form>
bool read_record(const Record<Form>& record, Value& value);

// The block that a record points to, null for one that holds everything in itself.
template <class Form>
const void* memory_of(const Record<Form>& record);

}  // namespace quantiverse::host
