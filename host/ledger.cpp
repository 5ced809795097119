#include "host/ledger.h"

#include <algorithm>
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
void Ledger::hand_out(const Record<Form>& record, Memory memory, std::string_view operation) {
  Loan& loan = loans_[memory_of(record)];
  loan.memory = std::move(memory);
  loan.number = ++handed_out_;
  loan.form = Form::kNumber;
  loan.kind = kind_of(record.type);
  loan.operation = operation;
  loan.is_out = true;
}

template <class Form>
bool Ledger::take_back(const Record<Form>& record) {
  const void* const block = memory_of(record);
  if (block == nullptr) return true;
  const auto found = loans_.find(block);
  if (found == loans_.end()) {
    faults_.push_back(words({"foreign free: this ", kind_of(record.type), " isn't Excel's"}));
    return false;
  }
  Loan& loan = found->second;
  if (!loan.is_out) {
    faults_.push_back(words(
        {"double free: the ", loan.kind, " that ", loan.operation, " gave came back once more"}));
    return false;
  }
  if (loan.form != Form::kNumber) {
    faults_.push_back(words({"foreign free: the ", loan.kind, " that ", loan.operation,
                             " gave came back as the other generation's"}));
    return false;
  }
  loan.memory = Memory();
  loan.is_out = false;
  ++returned_;
  return true;
}

std::vector<std::string> Ledger::leaks() const {
  std::vector<const Loan*> out;
  for (const auto& [block, loan] : loans_) {
    if (loan.is_out) out.push_back(&loan);
  }
  std::sort(out.begin(), out.end(),
            [](const Loan* a, const Loan* b) { return a->number < b->number; });
  std::vector<std::string> sentences;
  sentences.reserve(out.size());
  for (const Loan* loan : out) {
    sentences.push_back(
        words({"leak: the ", loan->kind, " that ", loan->operation, " gave never came back"}));
  }
  return sentences;
}

template void Ledger::hand_out(const Record<Form4>&, Memory, std::string_view);
template void Ledger::hand_out(const Record<Form12>&, Memory, std::string_view);
template bool Ledger::take_back(const Record<Form4>&);
template bool Ledger::take_back(const Record<Form12>&);

}  // namespace quantiverse::host
