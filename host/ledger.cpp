#include "host/ledger.h"

#include <initializer_list>
#include <limits>
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

std::string Ledger::Loan::complaint() const {
  return is_out
             ? words({"foreign free: the ", kind, " that ", operation,
                      " gave came back as the other generation's"})
             : words({"double free: the ", kind, " that ", operation, " gave came back once more"});
}

Ledger::Loan* Ledger::Page::find(const void* block) {
  if (recent != nullptr && recent->block == block) return recent;
  const auto found = loans.find(block);
  if (found == loans.end()) return nullptr;
  recent = &found->second;
  return recent;
}

bool Ledger::Page::settle(Loan& loan, int form) {
  if (!loan.is_out || loan.form != form) return false;
  loan.memory.free_all();
  loan.is_out = false;
  ++returned;
  return true;
}

template <class Form>
void Ledger::hand_out(const Record<Form>& record, Memory&& memory, std::string_view operation,
                      std::int64_t number) {
  const void* const block = memory_of(record);
  Page& page = pages_[stripe_of_thread()];
  const std::lock_guard lock(page.lock);
  Loan* const known = page.find(block);
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
  {
    Page& page = pages_[stripe_of_thread()];
    const std::lock_guard lock(page.lock);
    Loan* const loan = page.find(block);
    if (loan != nullptr && page.settle(*loan, Form::kNumber)) return true;
  }
  return take_back_of_any(block, Form::kNumber, kind_of(record.type));
}

bool Ledger::take_back_of_any(const void* block, int form, std::string_view kind) {
  std::string complaint = words({"foreign free: this ", kind, " isn't Excel's"});
  std::int64_t latest = 0;  // of those that were lent the address one after another
  for (Page& page : pages_) {
    const std::lock_guard lock(page.lock);
    Loan* const loan = page.find(block);
    if (loan == nullptr) continue;
    if (page.settle(*loan, form)) return true;
    const std::int64_t time =
        loan->is_out ? std::numeric_limits<std::int64_t>::max() : loan->number;
    if (time < latest) continue;
    latest = time;
    complaint = loan->complaint();
  }
  const std::lock_guard lock(faults_lock_);
  faults_.push_back(std::move(complaint));
  return false;
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

template void Ledger::hand_out(const Record<Form4>&, Memory&&, std::string_view, std::int64_t);
template void Ledger::hand_out(const Record<Form12>&, Memory&&, std::string_view, std::int64_t);
template bool Ledger::take_back(const Record<Form4>&);
template bool Ledger::take_back(const Record<Form12>&);

}  // namespace quantiverse::host
