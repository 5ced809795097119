#include "addin/exceptions.h"

#include <typeinfo>

#include "addin/addin_state.h"
#include "addin/host.h"
#include "addin/xloper.h"

namespace quantiverse {
namespace {

template <typename Char>
std::basic_string<Char> MessageOr(unsigned number, std::basic_string<Char> text) {
  MessageText(number, text);
  return text;
}

}  // namespace

CXlRuntimeException::CXlRuntimeException(unsigned message)
    : std::runtime_error(MessageOr<char>(message, "Unknown error")),
      wide_(MessageOr<char16_t>(message, u"Unknown error")) {}

CXlRuntimeException::CXlRuntimeException(const std::string& text)
    : std::runtime_error(text), wide_(WideText(text)) {}

CXlRuntimeException::CXlRuntimeException(const std::u16string& text)
    : std::runtime_error(NarrowText(text)), wide_(text) {}

CXlStructuredException::CXlStructuredException(std::uint32_t code)
    : CXlRuntimeException(FormatMessage(kMessageStructuredException, HexText(code).c_str())),
      code_(code) {}

CXlConversionException::CXlConversionException(unsigned type)
    : CXlRuntimeException(
          FormatMessage(kMessageExpected, MessageOr<char>(type, "Unknown error").c_str())) {}

CXlComException::CXlComException(const std::u16string& call, std::uint32_t result)
    : CXlRuntimeException(FormatMessage<char16_t>(kMessageCallFailed, call.c_str(),
                                                  HexText<char16_t>(result).c_str())),
      call_(call),
      result_(result) {}

CXlErrorException::CXlErrorException(XlError error)
    : CXlRuntimeException(
          FormatMessage(kMessageExcelError, HexText(static_cast<std::uint32_t>(error)).c_str())),
      error_(error) {}

void ExceptionToValue(CXlOper& result, const CXlRuntimeException& exception) {
  // The class itself: what is derived from it has a text of its own.
  if (typeid(exception) == typeid(CXlErrorException)) {
    result = static_cast<const CXlErrorException&>(exception).Error();
  } else if (IsExcel12()) {
    result = FormatMessage<char16_t>(kMessageError, exception.WideWhat().c_str());
  } else {
    result = FormatMessage(kMessageError, exception.what());
  }
}

}  // namespace quantiverse
