#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/record.h"
#include "host/stripes.h"

namespace quantiverse::host {

// What the host handed out and the add-in has to give back through xlFree. Any thread, at once.
class Ledger {
 public:
  // record:    what the add-in gets, already pointing into `memory`.
  // operation: what gave it, for complaints; a text that lives on.
  // number:    the order of leaks, which may be alike for two that are told in the same words. So
  //            threads needn't count together.
  template <class Form>
  void hand_out(const Record<Form>& record, Memory&& memory, std::string_view operation,
                std::int64_t number);

  // Frees what `record` points to. A record that points to nothing is fine.
  // false: it isn't the host's to free, or no longer; noted as a fault.
  template <class Form>
  bool take_back(const Record<Form>& record);

  [[nodiscard]] std::int64_t handed_out() const;
  [[nodiscard]] std::int64_t returned() const;

  // One sentence for each double or foreign free so far.
  [[nodiscard]] std::vector<std::string> faults() const;
  // One sentence for each result that is still out, in the order in which they went.
  [[nodiscard]] std::vector<std::string> leaks() const;

  // As if nothing had been handed out yet.
  void clear();

 private:
  struct Loan {
    // Why it can't be taken back once more, or as another generation's.
    [[nodiscard]] std::string complaint() const;

    const void* block = nullptr;
    Memory memory;
    std::int64_t number = 0;
    int form = 0;
    std::string_view kind;
    std::string_view operation;
    bool is_out = false;
  };

  // What a thread was lent, which nearly always is the one to give it back.
  struct alignas(kApart) Page {
    // Null if the block was never lent to the thread.
    Loan* find(const void* block);
    // Takes a loan back if it is out and of this generation.
    bool settle(Loan& loan, int form);

    mutable BriefLock lock;
    // By the block that the record points to. Loans that came back stay until the thread is lent
    // their address again: they tell a double free from a foreign one.
    std::unordered_map<const void*, Loan> loans;
    // The one that was looked for last, since a block that came back is soon lent again.
    Loan* recent = nullptr;
    std::int64_t handed_out = 0;
    std::int64_t returned = 0;
  };

  // The same for a block of any thread, or a complaint.
  bool take_back_of_any(const void* block, int form, std::string_view kind);

  Stripes<Page> pages_;
  mutable std::mutex faults_lock_;
  std::vector<std::string> faults_;
};

}  // namespace quantiverse::host
