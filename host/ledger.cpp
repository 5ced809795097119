#include "host/ledger.h"

#include <initializer_list>
#include <map>
#include <utility>

namespace quantiverse::host {
namespace {

std::string_view kind_of(unsigned type) {
  switch (type & kTypeMask) {
    case kTypeText:
      return "text";
    case kTypeReference:
      return "reference";
    default:
      return "array";
  }
}

std::string words(std::initializer_list<std::string_view> parts) {
  std::string sentence;
  for (const auto part : parts) sentence += part;
  return sentence;
}

}  // namespace

template <class Form>
void Ledger::hand_out(const Record<Form>& record, Memory&& memory, std::string_view operation,
                      std::int64_t number) {
  const void* const block = memory_of(record);
  Page& page = page_of(block);
  const std::lock_guard lock(page.lock);
  Loan* const known = find(page, block);
  Loan& loan = known != nullptr ? *known : *(page.recent = &page.loans[block]);
  loan.block = block;
  loan.memory = std::move(memory);
  loan.number = number;
  loan.form = Form::kNumber;
  loan.kind = kind_of(record.type);
  loan.operation = operation;
  loan.is_out = true;
  ++page.handed_out;
}

template <class Form>
bool Ledger::take_back(const Record<Form>& record) {
  const void* const block = memory_of(record);
  if (block == nullptr) return true;
  Page& page = page_of(block);
  const std::lock_guard lock(page.lock);
  Loan* const loan = find(page, block);
  if (loan == nullptr || !loan->is_out || loan->form != Form::kNumber) {
    return complain_of(loan, kind_of(record.type));
  }
  loan->memory.free_all();
  loan->is_out = false;
  ++page.returned;
  return true;
}

Ledger::Loan* Ledger::find(Page& page, const void* block) {
  if (page.recent != nullptr && page.recent->block == block) return page.recent;
  const auto found = page.loans.find(block);
  if (found == page.loans.end()) return nullptr;
  page.recent = &found->second;
  return page.recent;
}

std::vector<std::string> Ledger::leaks() const {
  std::multimap<std::int64_t, std::string> sentences;
  for (const Page& page : pages_) {
    const std::lock_guard lock(page.lock);
    for (const auto& [block, loan] : page.loans) {
      if (!loan.is_out) continue;
      sentences.emplace(loan.number, words({"leak: the ", loan.kind, " that ", loan.operation,
                                            " gave never came back"}));
    }
  }
  std::vector<std::string> in_order;
  in_order.reserve(sentences.size());
  for (auto& [number, sentence] : sentences) in_order.push_back(std::move(sentence));
  return in_order;
}

std::int64_t Ledger::handed_out() const {
  std::int64_t count = 0;
  for (const Page& page : pages_) {
    const std::lock_guard lock(page.lock);
    count += page.handed_out;
  }
  return count;
}

std::int64_t Ledger::returned() const {
  std::int64_t count = 0;
  for (const Page& page : pages_) {
    const std::lock_guard lock(page.lock);
    count += page.returned;
  }
  return count;
}

std::vector<std::string> Ledger::faults() const {
  const std::lock_guard lock(faults_lock_);
  return faults_;
}

void Ledger::clear() {
  for (Page& page : pages_) {
    const std::lock_guard lock(page.lock);
    page.recent = nullptr;
    page.loans.clear();
    page.handed_out = 0;
    page.returned = 0;
  }
  const std::lock_guard lock(faults_lock_);
  faults_.clear();
}

Ledger::Page& Ledger::page_of(const void* block) {
  // The last bits of an address are those within a block.
  constexpr int kBitsOfBlock = 4;
  return pages_[(reinterpret_cast<std::uintptr_t>(block) >> kBitsOfBlock) % kStripes];
}

bool Ledger::complain_of(const Loan* loan, std::string_view kind) {
  std::string sentence;
  if (loan == nullptr) {
    sentence = words({"foreign free: this ", kind, " isn't Excel's"});
  } else if (!loan->is_out) {
    sentence = words(
        {"double free: the ", loan->kind, " that ", loan->operation, " gave came back once more"});
  } else {
    sentence = words({"foreign free: the ", loan->kind, " that ", loan->operation,
                      " gave came back as the other generation's"});
  }
  const std::lock_guard lock(faults_lock_);
  faults_.push_back(std::move(sentence));
  return false;
}

template void Ledger::hand_out(const Record<Form4>&, Memory&&, std::string_view, std::int64_t);
template void Ledger::hand_out(const Record<Form12>&, Memory&&, std::string_view, std::int64_t);
template bool Ledger::take_back(const Record<Form4>&);
template bool Ledger::take_back(const Record<Form12>&);

}  // namespace quantiverse::host
