#pragma once

#include <string>
#include <utility>

#include "addin/windows/ole.h"

// Owners of what the system counts or allocates for component objects.
namespace quantiverse {

// A reference to an interface.
template <typename Interface>
class ComPointer {
 public:
  ComPointer() = default;
  // Takes over a reference that the caller has.
  explicit ComPointer(Interface* owned) : pointer_(owned) {}
  ComPointer(const ComPointer& other) : pointer_(other.pointer_) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  ComPointer(ComPointer&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPointer& operator=(ComPointer other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPointer() {
    if (pointer_ != nullptr) pointer_->Release();
  }
  // Of a pointer that somebody else has a reference for.
  static ComPointer Share(Interface* pointer) {
    if (pointer != nullptr) pointer->AddRef();
    return ComPointer(pointer);
  }

  [[nodiscard]] Interface* Get() const { return pointer_; }
  Interface* operator->() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }

  // Where a call puts a reference in place of this one.
  Interface** Receive() {
    *this = ComPointer();
    return &pointer_;
  }
  void** ReceiveVoid() { return reinterpret_cast<void**>(Receive()); }

 private:
  Interface* pointer_ = nullptr;
};

// A variant, with what it owns.
class Variant {
 public:
  Variant() { VariantInit(&value); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  ~Variant() { VariantClear(&value); }

  VARIANT value;
};

inline std::u16string TextOfBstr(BSTR text) {
  return text != nullptr ? std::u16string(AsUtf16(text), SysStringLen(text)) : std::u16string();
}

}  // namespace quantiverse
