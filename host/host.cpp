#include "host/host.h"

#include <utility>

#include "host/call.h"
#include "host/text.h"

namespace quantiverse::host {

bool Dialogs::next_answer() {
  if (answers.empty()) return true;
  const bool answer = answers.front();
  answers.pop_front();
  return answer;
}

bool Dialogs::answer_box(std::u16string_view text, std::u16string_view title, unsigned flags) {
  const bool answer = next_answer();
  shown.push_back({{"text", from_utf16(text)},
                   {"title", from_utf16(title)},
                   {"flags", flags},
                   {"answer", answer}});
  return answer;
}

Host::Host(Options chosen)
    : options(std::move(chosen)),
      workbook(Sheet::of_version(options.version),
               [this](const FormulaCall& call) { return evaluate(*this, call); }),
      workspace(default_workspace()) {}

std::vector<Value> default_workspace() {
  return {{Number{1.0}}, {Number{1.0}}, {"."}, {","}, {","}, {"R"}, {"C"}};
}

Host*& serving_host() {
  // Excel's entry points take nothing that leads to it.
  // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
  static Host* host = nullptr;
  return host;
}

}  // namespace quantiverse::host
