#pragma once

#include <cstddef>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include "host/value.h"
#include "host/xlcall.h"

// Between values and the records of either generation.
namespace quantiverse::host {

// What records point to. Each piece is a block of its own, so that a sanitizer sees a step beyond.
class Memory {
 public:
  Memory() = default;
  Memory(Memory&& other) noexcept : last_(std::exchange(other.last_, nullptr)) {}
  Memory& operator=(Memory&& other) noexcept {
    std::swap(last_, other.last_);
    return *this;
  }
  ~Memory() { free_all(); }

  // Of `count` objects: records are zeroed, characters are to be written.
  template <class T>
  T* allocate(std::size_t count) {
    static_assert(alignof(T) <= alignof(Piece));
    const std::size_t size = count * sizeof(T);
    last_ = ::new (::operator new(sizeof(Piece) + size)) Piece{last_};
    void* const start = last_ + 1;
    if (!std::is_integral_v<T>) std::memset(start, 0, size);
    return static_cast<T*>(start);
  }
  void free_all() {
    while (last_ != nullptr) ::operator delete(std::exchange(last_, last_->before));
  }

 private:
  // Lies ahead of each.
  struct alignas(8) Piece {
    Piece* before;
  };

  Piece* last_ = nullptr;
};

// Writes `value` into `record`, and what it points to into `memory`.
// A narrow text is cut at its 255th character.
// false: the generation can't hold the value, such as an array that is too large; `record` is
//        then unchanged, `memory` may not be.
template <class Form>
bool write_record(const Value& value, Record<Form>& record, Memory& memory);

// Copies what `record` holds, in the storage that `value` has. Of areas only the first counts.
// false: no value can be read from it, such as a text without a pointer; `value` is of no use.
template <class Form>
bool read_record(const Record<Form>& record, Value& value);

// The block that a record points to, null for one that holds everything in itself.
template <class Form>
const void* memory_of(const Record<Form>& record);

}  // namespace quantiverse::host
