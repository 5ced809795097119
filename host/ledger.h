#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/record.h"

namespace quantiverse::host {

// What the host handed out and the add-in has to give back through xlFree.
class Ledger {
 public:
  // record:    what the add-in gets, already pointing into `memory`.
  // operation: what gave it, for complaints; a text that lives on.
  template <class Form>
  void hand_out(const Record<Form>& record, Memory memory, std::string_view operation);

  // Frees what `record` points to. A record that points to nothing is fine.
  // false: it isn't the host's to free, or no longer; noted as a fault.
  template <class Form>
  bool take_back(const Record<Form>& record);

  [[nodiscard]] std::int64_t handed_out() const { return handed_out_; }
  [[nodiscard]] std::int64_t returned() const { return returned_; }

  // One sentence for each double or foreign free so far.
  [[nodiscard]] const std::vector<std::string>& faults() const { return faults_; }
  // One sentence for each result that is still out, in the order in which they went.
  [[nodiscard]] std::vector<std::string> leaks() const;

 private:
  struct Loan {
    Memory memory;
    std::int64_t number = 0;  // counts results handed out
    int form = 0;
    std::string_view kind;
    std::string_view operation;
    bool is_out = false;
  };

  // By the block that the record points to. Loans that came back stay until their address is used
  // again: they tell a double free from a foreign one.
  std::unordered_map<const void*, Loan> loans_;
  std::int64_t handed_out_ = 0;
  std::int64_t returned_ = 0;
  std::vector<std::string> faults_;
};

}  // namespace quantiverse::host
