#include "addin/return_block.h"

#include <memory>
#include <mutex>
#include <new>

#include "addin/addin_state.h"
#include "addin/exceptions.h"

namespace quantiverse {
namespace {

template <XlRecord Record>
void FreeIfHandedOver(Record& record) {
  if ((record.xltype & xlbitDLLFree) != 0) FreeContents(record);
  record = {};
}

template <XlRecord Record>
Record* HandToExcel(CXlOper& value, Record& record) {
  FreeIfHandedOver(record);
  if (value.HandOver(record)) SetType(record, TypeOf(record) | xlbitDLLFree);
  return &record;
}

void Link(XlReturnBlock& block) {
  ReturnBlocks& blocks = State().return_blocks;
  const std::lock_guard lock(blocks.lock);
  block.next = blocks.first;
  if (block.next != nullptr) block.next->previous = &block;
  blocks.first = &block;
}

void Unlink(const XlReturnBlock& block) {
  ReturnBlocks& blocks = State().return_blocks;
  const std::lock_guard lock(blocks.lock);
  if (block.next != nullptr) block.next->previous = block.previous;
  (block.previous != nullptr ? block.previous->next : blocks.first) = block.next;
}

void DeleteBlock(void* pointer) {
  const std::unique_ptr<XlReturnBlock> block(static_cast<XlReturnBlock*>(pointer));
  if (block == nullptr) return;
  Unlink(*block);
  FreeIfHandedOver(block->result4);
  FreeIfHandedOver(block->result12);
}

}  // namespace

XlReturnBlock& ReturnBlock() {
  const ThreadSlot& slot = State().return_blocks.slot;
  auto* block = static_cast<XlReturnBlock*>(slot.Get());
  if (block == nullptr) {
    auto made = std::make_unique<XlReturnBlock>();
    made->missing = XlMissing{};
    if (!slot.Set(made.get())) throw std::bad_alloc();
    block = made.release();
    Link(*block);
  }
  return *block;
}

bool AttachReturnBlocks() { return State().return_blocks.slot.Allocate(DeleteBlock); }

void DetachThreadsReturnBlock() {
  const ThreadSlot& slot = State().return_blocks.slot;
  if (!slot.allocated) return;
  DeleteBlock(slot.Get());
  static_cast<void>(slot.Set(nullptr));  // can't fail once there was a block
}

void DetachReturnBlocks() {
  ReturnBlocks& blocks = State().return_blocks;
  blocks.slot.Free();
  while (blocks.first != nullptr) DeleteBlock(blocks.first);
}

XLOPER* ToXloper(CXlOper& value) { return HandToExcel(value, ReturnBlock().result4); }
XLOPER12* ToXloper12(CXlOper& value) { return HandToExcel(value, ReturnBlock().result12); }

void SetResult(CXlOper& result, const CXlOper* returned) {
  if (returned == nullptr || returned == &result) return;
  if (returned != &ReturnBlock().common) throw CXlIllegalArgumentException(kMessageIllegalResult);
  result = *returned;
}

void AutoFree(XLOPER* record) {
  if (record != nullptr) FreeContents(*record);
}

void AutoFree(XLOPER12* record) {
  if (record != nullptr) FreeContents(*record);
}

}  // namespace quantiverse
