#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "addin/messages.h"

// Everything that fails in the add-in layer is thrown as one of these, caught at the entry points
// by its root, and turned into the value that the cell shows.
namespace quantiverse {

class CXlOper;
enum class XlError : std::uint8_t;

// The root; also thrown itself, for general failures. The text is kept in both widths, the one
// that wasn't given made from the other by the system's code page.
class CXlRuntimeException : public std::runtime_error {
 public:
  // Of a message; "Unknown error" if there is none of that number.
  explicit CXlRuntimeException(unsigned message);
  explicit CXlRuntimeException(const std::string& text);
  explicit CXlRuntimeException(const std::u16string& text);

  [[nodiscard]] const std::u16string& WideWhat() const { return wide_; }

 private:
  std::u16string wide_;
};

// A processor fault, or what another platform has in its place.
class CXlStructuredException : public CXlRuntimeException {
 public:
  explicit CXlStructuredException(std::uint32_t code);
  [[nodiscard]] std::uint32_t Code() const { return code_; }

 private:
  std::uint32_t code_;
};

// Memory was touched that isn't the program's.
inline constexpr std::uint32_t kAccessViolation = 0xC0000005;

// A value isn't of the type asked for: "Expected number".
class CXlConversionException : public CXlRuntimeException {
 public:
  // type: the message that names the type, such as kMessageNumber.
  explicit CXlConversionException(unsigned type);
};

class CXlOutOfRangeException : public CXlRuntimeException {
 public:
  CXlOutOfRangeException() : CXlRuntimeException(kMessageIndexOutOfRange) {}
};

class CXlIllegalArgumentException : public CXlRuntimeException {
 public:
  explicit CXlIllegalArgumentException(unsigned message = kMessageIllegalArgument)
      : CXlRuntimeException(message) {}
};

class CXlBadOperTypeException : public CXlRuntimeException {
 public:
  CXlBadOperTypeException() : CXlRuntimeException(kMessageBadType) {}
};

class CXlStringTooLongException : public CXlRuntimeException {
 public:
  CXlStringTooLongException() : CXlRuntimeException(kMessageStringTooLong) {}
};

// A call into COM failed.
class CXlComException : public CXlRuntimeException {
 public:
  // call: the function's name; result: its HRESULT.
  CXlComException(const std::u16string& call, std::uint32_t result);
  explicit CXlComException(const std::u16string& text) : CXlRuntimeException(text) {}

  [[nodiscard]] const std::u16string& Call() const { return call_; }
  [[nodiscard]] std::uint32_t Result() const { return result_; }

 private:
  std::u16string call_;
  std::uint32_t result_ = 0;
};

// For a function that wants its cell to show an error value, such as #N/A, in place of a text.
class CXlErrorException : public CXlRuntimeException {
 public:
  explicit CXlErrorException(XlError error);
  [[nodiscard]] XlError Error() const { return error_; }

 private:
  XlError error_;
};

// Makes `result` what the cell shows of a caught exception: "#ERROR: " and its text, or the error
// value of a CXlErrorException. What `result` held is released.
void ExceptionToValue(CXlOper& result, const CXlRuntimeException& exception);

}  // namespace quantiverse
