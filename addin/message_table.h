#pragma once

// The data behind the numbered messages.
namespace quantiverse {

inline constexpr unsigned kMessageCount = 66;

// The messages that the add-in raises. The rest of the table is there so that these keep their
// numbers.
inline constexpr unsigned kMessageError = 1;
inline constexpr unsigned kMessageBoolean = 4;
inline constexpr unsigned kMessageNumber = 5;
inline constexpr unsigned kMessageString = 7;
inline constexpr unsigned kMessageConversionError = 10;
inline constexpr unsigned kMessageExpected = 11;
inline constexpr unsigned kMessageIndexOutOfRange = 30;
inline constexpr unsigned kMessageIllegalArgument = 31;
inline constexpr unsigned kMessageBadType = 32;
inline constexpr unsigned kMessageStringTooLong = 37;
inline constexpr unsigned kMessageSourceNotScalar = 41;
inline constexpr unsigned kMessageIllegalResult = 48;
inline constexpr unsigned kMessageFailedFunctions = 49;
inline constexpr unsigned kMessageLoadFailure = 50;
inline constexpr unsigned kMessageStructuredException = 55;
inline constexpr unsigned kMessageExcelError = 56;
inline constexpr unsigned kMessageCallFailed = 58;

// A message is held twice: built in, in the narrow form, and as a string resource, which comes
// first. REQUIRES: number < kMessageCount
const char* BuiltInMessage(unsigned number);
// The resource in English, the same on every platform; null would leave it to the built-in text.
const char16_t* ResourceMessage(unsigned number);
// The id of a message's string resource in any language is its number and this.
inline constexpr unsigned kMessageResourceBase = 53248;

}  // namespace quantiverse
