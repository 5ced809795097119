// Prints the table of accuracies that stands in docs/functions.md.

#include <cstdio>

#include "accuracy/accuracy.h"

int main() {
  std::string complaints;
  const std::string table = quantiverse::accuracy::accuracy_table(complaints);
  std::fputs(table.c_str(), stdout);
  std::fputs(complaints.c_str(), stderr);
  return complaints.empty() ? 0 : 1;
}
