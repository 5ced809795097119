#pragma once

#include <cstddef>
#include <cstdint>

// Excel's published interface: its value records, the codes of its operations and its entry points.
// Nothing of ours is in here. The records are laid out as Excel lays them out, whatever the
// alignment habits of the compiler.
namespace quantiverse {

#if defined(_WIN32)
#define XLCALL_PASCAL __stdcall
#else
#define XLCALL_PASCAL
#endif

using XCHAR = char16_t;          // a text's first character is its length
using IDSHEET = std::uintptr_t;  // 0 is the current sheet

// Rows and columns count from 0; both ends belong to the area.
struct XLREF {
  std::uint16_t rwFirst;
  std::uint16_t rwLast;
  std::uint8_t colFirst;
  std::uint8_t colLast;
};

struct XLMREF {
  std::uint16_t count;
  XLREF reflct[1];  // in truth `count` of them
};

struct XLREF12 {
  std::int32_t rwFirst;
  std::int32_t rwLast;
  std::int32_t colFirst;
  std::int32_t colLast;
};

struct XLMREF12 {
  std::uint16_t count;
  XLREF12 reflct[1];  // in truth `count` of them
};

// The value of Excel 4 to 11. Texts are in the system's code page behind a byte of length.
struct XLOPER {
  union alignas(8) Value {
    double num;
    char* str;
    std::uint16_t xbool;
    std::uint16_t err;
    std::int16_t w;
    struct {
      std::uint16_t count;  // always 1
      XLREF ref;
    } sref;
    struct {
      XLMREF* lpmref;
      IDSHEET idSheet;
    } mref;
    struct {
      XLOPER* lparray;  // row by row
      std::uint16_t rows;
      std::uint16_t columns;
    } array;
    struct {
      union {
        std::int16_t level;
        std::int16_t tbctrl;
        IDSHEET idSheet;
      } valflow;
      std::uint16_t rw;
      std::uint8_t col;
      std::uint8_t xlflow;
    } flow;
    struct {
      union {
        std::uint8_t* lpbData;
        void* hdata;
      } h;
      std::int32_t cbData;
    } bigdata;
  } val;
  std::uint16_t xltype;
};

// The value of Excel 12 and later. Texts are UTF-16 behind a character of length.
struct XLOPER12 {
  union alignas(8) Value {
    double num;
    XCHAR* str;
    std::int32_t xbool;
    std::int32_t err;
    std::int32_t w;
    struct {
      std::uint16_t count;  // always 1
      XLREF12 ref;
    } sref;
    struct {
      XLMREF12* lpmref;
      IDSHEET idSheet;
    } mref;
    struct {
      XLOPER12* lparray;  // row by row
      std::int32_t rows;
      std::int32_t columns;
    } array;
    struct {
      union {
        std::int32_t level;
        std::int32_t tbctrl;
        IDSHEET idSheet;
      } valflow;
      std::int32_t rw;
      std::int32_t col;
      std::uint8_t xlflow;
    } flow;
    struct {
      union {
        std::uint8_t* lpbData;
        void* hdata;
      } h;
      std::int32_t cbData;
    } bigdata;
  } val;
  std::uint32_t xltype;
};

inline constexpr bool kIs64Bit = sizeof(void*) == 8;
static_assert(sizeof(XLREF) == 6 && offsetof(XLMREF, reflct) == 2);
static_assert(sizeof(XLREF12) == 16 && offsetof(XLMREF12, reflct) == 4);
static_assert(sizeof(XLOPER) == (kIs64Bit ? 24 : 16));
static_assert(offsetof(XLOPER, xltype) == (kIs64Bit ? 16 : 8));
static_assert(offsetof(XLOPER, val.sref.ref) == 2);
static_assert(offsetof(XLOPER, val.mref.idSheet) == sizeof(void*));
static_assert(offsetof(XLOPER, val.array.rows) == sizeof(void*));
static_assert(offsetof(XLOPER, val.array.columns) == sizeof(void*) + 2);
static_assert(offsetof(XLOPER, val.flow.rw) == sizeof(void*));
static_assert(offsetof(XLOPER, val.flow.xlflow) == sizeof(void*) + 3);
static_assert(offsetof(XLOPER, val.bigdata.cbData) == sizeof(void*));
static_assert(sizeof(XLOPER12) == 32 && offsetof(XLOPER12, xltype) == 24);
static_assert(offsetof(XLOPER12, val.sref.ref) == 4);
static_assert(offsetof(XLOPER12, val.mref.idSheet) == sizeof(void*));
static_assert(offsetof(XLOPER12, val.array.rows) == sizeof(void*));
static_assert(offsetof(XLOPER12, val.array.columns) == sizeof(void*) + 4);
static_assert(offsetof(XLOPER12, val.flow.rw) == sizeof(void*));
static_assert(offsetof(XLOPER12, val.flow.xlflow) == sizeof(void*) + 8);
static_assert(offsetof(XLOPER12, val.bigdata.cbData) == sizeof(void*));

// What a record holds.
inline constexpr unsigned xltypeNum = 0x0001;
inline constexpr unsigned xltypeStr = 0x0002;
inline constexpr unsigned xltypeBool = 0x0004;
inline constexpr unsigned xltypeRef = 0x0008;  // areas on any sheet
inline constexpr unsigned xltypeErr = 0x0010;
inline constexpr unsigned xltypeFlow = 0x0020;
inline constexpr unsigned xltypeMulti = 0x0040;  // an array
inline constexpr unsigned xltypeMissing = 0x0080;
inline constexpr unsigned xltypeNil = 0x0100;
inline constexpr unsigned xltypeSRef = 0x0400;  // one area on the current sheet
inline constexpr unsigned xltypeInt = 0x0800;
inline constexpr unsigned xltypeBigData = xltypeStr | xltypeInt;

// Flags beside the type: who frees the contents of a record that was handed over.
inline constexpr unsigned xlbitXLFree = 0x1000;
inline constexpr unsigned xlbitDLLFree = 0x4000;

// The codes that a call of Excel comes back with.
inline constexpr int xlretSuccess = 0;
inline constexpr int xlretInvCount = 4;
inline constexpr int xlretInvXloper = 8;
inline constexpr int xlretFailed = 32;

// Flags beside an operation's code.
inline constexpr int xlIntl = 0x2000;  // texts as the user's locale writes them
inline constexpr int xlSpecial = 0x4000;
inline constexpr int xlCommand = 0x8000;

// clang-format off
// Operations of the interface itself.
inline constexpr int xlFree       = xlSpecial | 0;
inline constexpr int xlCoerce     = xlSpecial | 2;
inline constexpr int xlGetHwnd    = xlSpecial | 8;
inline constexpr int xlGetName    = xlSpecial | 9;

// Functions.
inline constexpr int xlfSetName        = 88;
inline constexpr int xlfActiveCell     = 94;
inline constexpr int xlfGetFormula     = 106;
inline constexpr int xlfRegister       = 149;
inline constexpr int xlfAddMenu        = 152;
inline constexpr int xlfAddCommand     = 153;
inline constexpr int xlfDeleteMenu     = 158;
inline constexpr int xlfGetCell        = 185;
inline constexpr int xlfGetWorkspace   = 186;
inline constexpr int xlfUnregister     = 201;
inline constexpr int xlfFormulaConvert = 241;
inline constexpr int xlfInfo           = 244;
inline constexpr int xlfRtd            = 379;

// Commands.
inline constexpr int xlcClose          = xlCommand | 16;
inline constexpr int xlcFormula        = xlCommand | 96;
inline constexpr int xlcFormulaArray   = xlCommand | 98;
inline constexpr int xlcAlert          = xlCommand | 118;
inline constexpr int xlcNew            = xlCommand | 119;
inline constexpr int xlcEcho           = xlCommand | 141;
inline constexpr int xlcFunctionWizard = xlCommand | 450;
// clang-format on

// The entry points. An operation without a result takes a null one.
extern "C" {
using Excel4Entry = int(int function, XLOPER* result, int count, ...);
using Excel4vEntry = int XLCALL_PASCAL(int function, XLOPER* result, int count, XLOPER** arguments);
using MdCallBack12Entry = int XLCALL_PASCAL(int function, int count, XLOPER12** arguments,
                                            XLOPER12* result);
}

}  // namespace quantiverse
