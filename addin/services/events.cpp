#include "addin/services/events.h"

#include <concepts>

namespace quantiverse {
namespace {

// Calls `action` with each event.
template <typename Events, typename Action>
void ForEach(Events& events, Action action) {
  std::apply([&action](auto&... event) { (action(event), ...); }, events);
}

template <typename Event>
constexpr bool kIsEarly =
    std::same_as<Event, CXllOpenEvent> || std::same_as<Event, CXlRegisterFunctionsEvent>;

template <typename Event>
void AddObserversOf(CXlStaticObservers& observers, Event& event) {
  auto* observer = observers.Of<Event>().first;
  for (; observer != nullptr; observer = observer->Next()) event.AddObserver(*observer);
}

template <typename Args>
Args MakeArgs(const XlObservedEvent& observed) {
  Args args;
  if constexpr (requires { args.workbook; }) {
    args.workbook = observed.text1;
    if constexpr (requires { args.sheet; }) args.sheet = observed.text2;
  } else if constexpr (requires { args.sheet; }) {
    args.sheet = observed.text1;
  }
  if constexpr (requires { args.range; }) args.range = observed.text2;
  if constexpr (requires { args.save_as; }) args.save_as = observed.flag2;
  if constexpr (requires { args.success; }) args.success = observed.flag2;
  return args;
}

template <typename Event>
bool Fire(const Event& event, const XlObservedEvent& observed) {
  auto args = MakeArgs<typename Event::Args>(observed);
  event.Fire(args);
  if constexpr (requires { args.cancel; }) return args.cancel;
  return false;
}

}  // namespace

void CXllEvents::AddEarlyStaticObservers(CXlStaticObservers& observers) {
  ForEach(events_, [&observers]<typename Event>(Event& event) {
    if constexpr (kIsEarly<Event>) AddObserversOf(observers, event);
  });
}

void CXllEvents::AddStaticObservers(CXlStaticObservers& observers) {
  ForEach(events_, [&observers]<typename Event>(Event& event) {
    if constexpr (!kIsEarly<Event>) AddObserversOf(observers, event);
  });
}

void CXllEvents::RemoveAllObservers() {
  ForEach(events_, [](auto& event) { event.RemoveAllObservers(); });
}

bool CXllEvents::FireObserved(const XlObservedEvent& observed) {
  bool cancel = false;
  ForEach(events_, [&]<typename Event>(const Event& event) {
    if constexpr (requires { Event::kNumber; }) {
      if (Event::kNumber == observed.number) cancel = Fire(event, observed);
    }
  });
  return cancel;
}

}  // namespace quantiverse
