#pragma once

#include <quantiverse/quantiverse.h>

#include <string>

#include "addin/xlcall.h"
#include "addin/xloper.h"

// How a value comes back to Excel: in a record of the thread's own, which keeps it alive after the
// function has returned. Excel gives contents of the add-in back through xlAutoFree; if it doesn't,
// the thread's next return does.
namespace quantiverse {

// What Excel calls its release, and the number in that. It says the same at every call.
template <XlRecord Record>
struct KnownRelease {
  using Text = std::basic_string<typename XlForm<Record>::Char>;

  Text text;
  double number = 0.0;
};

struct XlReturnBlock {
  XLOPER result4{};
  XLOPER12 result12{};
  CXlOper common;                 // a value that bodies may return as theirs
  CXlOper missing;                // leaves an argument of a call out
  KnownRelease<XLOPER> release4;  // as the last call was told
  KnownRelease<XLOPER12> release12;
  std::string line;       // what the calculator is asked; the storage of both stays
  Calculator calculator;  // warm from call to call
  bool is_calculating = false;
  XlReturnBlock* next = nullptr;  // all blocks, for the day when the library goes
  XlReturnBlock* previous = nullptr;
};

// The block of this thread, made at first use. Throws std::bad_alloc, as it does unless
// AttachReturnBlocks gave true.
XlReturnBlock& ReturnBlock();

// The life of the blocks, told by the library's entry.
// false: the system has no slot left.
bool AttachReturnBlocks();
// Where the system tells of ending threads; elsewhere this happens by itself.
void DetachThreadsReturnBlock();
// Frees the blocks of all threads. None of them may be inside the library.
void DetachReturnBlocks();

// Moves the value into this thread's block. Its former contents are freed.
// Gives the block's record, marked with xlbitDLLFree if the add-in is to get it back.
XLOPER* ToXloper(CXlOper& value);
XLOPER12* ToXloper12(CXlOper& value);

// Brings what a body has returned into `result`: null and `result` itself mean that it stands
// there already, the block's common value is copied. Throws CXlIllegalArgumentException for others.
void SetResult(CXlOper& result, const CXlOper* returned);

// Excel is done with a record that it was handed with xlbitDLLFree. Null is allowed.
void AutoFree(XLOPER* record);
void AutoFree(XLOPER12* record);

}  // namespace quantiverse
