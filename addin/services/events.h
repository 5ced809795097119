#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "addin/services/event_args.h"
#include "addin/services/event_forwarding.h"

// What happens to the add-in and in Excel, for those who want to be told. All on Excel's main
// thread.
namespace quantiverse {

template <typename Args>
class CXlEventObserver {
 public:
  CXlEventObserver() = default;
  CXlEventObserver(const CXlEventObserver&) = delete;
  CXlEventObserver& operator=(const CXlEventObserver&) = delete;
  virtual ~CXlEventObserver() = default;
  virtual void Notify(Args& args) = 0;
};

template <typename ArgsType>
class CXlEvent {
 public:
  using Args = ArgsType;

  // Only events of Excel's object model are forwarded; the rest is made in the same way.
  explicit CXlEvent(CXlEventForwarding&) {}
  CXlEvent(const CXlEvent&) = delete;
  CXlEvent& operator=(const CXlEvent&) = delete;
  virtual ~CXlEvent() = default;

  // observer: has to stay until it is removed.
  void AddObserver(CXlEventObserver<Args>& observer) {
    if (observers_.empty()) OnFirstObserverAdded();
    observers_.push_back(&observer);
  }
  // One that isn't there is ignored.
  void RemoveObserver(const CXlEventObserver<Args>& observer) {
    const auto found = std::find(observers_.begin(), observers_.end(), &observer);
    if (found == observers_.end()) return;
    observers_.erase(found);
    if (observers_.empty()) OnLastObserverRemoved();
  }
  void RemoveAllObservers() {
    if (observers_.empty()) return;
    observers_.clear();
    OnLastObserverRemoved();
  }
  // Tells all observers in the order in which they came. They may come and go meanwhile, but one
  // that goes takes the turn of its successor along.
  void Fire(Args& args) const {
    for (std::size_t i = 0; i < observers_.size(); ++i) observers_[i]->Notify(args);
  }

 protected:
  virtual void OnFirstObserverAdded() {}
  virtual void OnLastObserverRemoved() {}

 private:
  std::vector<CXlEventObserver<Args>*> observers_;
};

// An event of Excel's object model, which is asked to tell of it while anybody wants to know.
template <typename Args, int Number>
class CXlComEvent : public CXlEvent<Args> {
 public:
  static constexpr int kNumber = Number;
  static_assert(Number >= 0 && Number < kXlEventNumbers);

  explicit CXlComEvent(CXlEventForwarding& forwarding)
      : CXlEvent<Args>(forwarding), forwarding_(forwarding) {}

 protected:
  void OnFirstObserverAdded() override { forwarding_.SwitchOn(Number); }
  void OnLastObserverRemoved() override { forwarding_.SwitchOff(Number); }

 private:
  CXlEventForwarding& forwarding_;
};

// clang-format off
struct CXllOpenEvent : CXlEvent<CXllOpenEventArgs> { using CXlEvent::CXlEvent; };
struct CXllCloseEvent : CXlEvent<CXlEventArgs> { using CXlEvent::CXlEvent; };
struct CXlRegisterFunctionsEvent : CXlEvent<CXlEventArgs> { using CXlEvent::CXlEvent; };
using CXlNewWorkbookEvent = CXlComEvent<CXlWorkbookEventArgs, 0>;
using CXlSelectionChangeEvent = CXlComEvent<CXlRangeEventArgs, 1>;
using CXlBeforeDoubleClickEvent = CXlComEvent<CXlCancellableRangeEventArgs, 2>;
using CXlBeforeRightClickEvent = CXlComEvent<CXlCancellableRangeEventArgs, 3>;
using CXlSheetActivateEvent = CXlComEvent<CXlWorksheetEventArgs, 4>;
using CXlSheetDeactivateEvent = CXlComEvent<CXlWorksheetEventArgs, 5>;
using CXlCalculateEvent = CXlComEvent<CXlWorksheetEventArgs, 6>;
using CXlSheetChangeEvent = CXlComEvent<CXlRangeEventArgs, 7>;
using CXlWorkbookOpenEvent = CXlComEvent<CXlWorkbookEventArgs, 8>;
using CXlWorkbookActivateEvent = CXlComEvent<CXlWorkbookEventArgs, 9>;
using CXlWorkbookDeactivateEvent = CXlComEvent<CXlWorkbookEventArgs, 10>;
using CXlWorkbookBeforeCloseEvent = CXlComEvent<CXlBeforeCloseEventArgs, 11>;
using CXlWorkbookBeforeSaveEvent = CXlComEvent<CXlBeforeSaveEventArgs, 12>;
using CXlWorkbookNewSheetEvent = CXlComEvent<CXlWorkbookNewSheetEventArgs, 14>;
using CXlAfterCalculateEvent = CXlComEvent<CXlAfterCalculateEventArgs, 20>;
using CXlWorkbookAfterSaveEvent = CXlComEvent<CXlAfterSaveEventArgs, 21>;
// clang-format on

// `Of<Event>` for every event.
template <template <typename Event> typename Of>
using XlForAllEvents = std::tuple<
    Of<CXllOpenEvent>, Of<CXllCloseEvent>, Of<CXlRegisterFunctionsEvent>, Of<CXlNewWorkbookEvent>,
    Of<CXlSelectionChangeEvent>, Of<CXlBeforeDoubleClickEvent>, Of<CXlBeforeRightClickEvent>,
    Of<CXlSheetActivateEvent>, Of<CXlSheetDeactivateEvent>, Of<CXlCalculateEvent>,
    Of<CXlSheetChangeEvent>, Of<CXlWorkbookOpenEvent>, Of<CXlWorkbookActivateEvent>,
    Of<CXlWorkbookDeactivateEvent>, Of<CXlWorkbookBeforeCloseEvent>, Of<CXlWorkbookBeforeSaveEvent>,
    Of<CXlWorkbookNewSheetEvent>, Of<CXlAfterCalculateEvent>, Of<CXlWorkbookAfterSaveEvent>>;

template <typename Args>
class CXlStaticEventObserver;

// The static observers of one event, the youngest first.
template <typename Args>
struct CXlStaticObserverList {
  CXlStaticEventObserver<Args>* first = nullptr;
};

// An observer that subscribes before there is an application: a static object, which the
// application adds to its event when it starts.
template <typename Args>
class CXlStaticEventObserver : public CXlEventObserver<Args> {
 public:
  // list: ready before constructors run.
  explicit CXlStaticEventObserver(CXlStaticObserverList<Args>& list)
      : list_(list), next_(list.first) {
    if (next_ != nullptr) next_->previous_ = this;
    list.first = this;
  }
  ~CXlStaticEventObserver() override {
    if (next_ != nullptr) next_->previous_ = previous_;
    (previous_ != nullptr ? previous_->next_ : list_.first) = next_;
  }
  [[nodiscard]] CXlStaticEventObserver* Next() const { return next_; }

 private:
  CXlStaticObserverList<Args>& list_;
  CXlStaticEventObserver* next_;
  CXlStaticEventObserver* previous_ = nullptr;
};

// The static observers of every event.
class CXlStaticObservers {
 public:
  template <typename Event>
  CXlStaticObserverList<typename Event::Args>& Of() {
    return std::get<ListOf<Event>>(lists_);
  }

 private:
  template <typename Event>
  struct ListOf : CXlStaticObserverList<typename Event::Args> {};

  XlForAllEvents<ListOf> lists_;
};

// An event as the observer function gets it: the arguments behind the number, each in all ways in
// which an event may want it. The empty text and false for what doesn't convert.
struct XlObservedEvent {
  int number = 0;
  std::u16string text1;
  std::u16string text2;
  bool flag2 = false;
};

// The events of an application.
class CXllEvents {
  template <typename Event>
  using Itself = Event;

 public:
  explicit CXllEvents(IXlEventApp& app)
      : CXllEvents(app, std::make_index_sequence<std::tuple_size_v<XlForAllEvents<Itself>>>()) {}

  // Such as Get<CXllOpenEvent>().
  template <typename Event>
  Event& Get() {
    return std::get<Event>(events_);
  }
  CXlEventForwarding& Forwarding() { return forwarding_; }

  // Adds the static observers of the events that come first: opening, and registration.
  void AddEarlyStaticObservers(CXlStaticObservers& observers);
  // Adds those of all other events. Throws what attaching to Excel throws.
  void AddStaticObservers(CXlStaticObservers& observers);
  void RemoveAllObservers();

  // What the observer function does. Numbers without an event do nothing.
  // Gives whether an observer cancelled the event.
  bool FireObserved(const XlObservedEvent& observed);

 private:
  // Each event is made of the one forwarding.
  template <std::size_t... Index>
  CXllEvents(IXlEventApp& app, std::index_sequence<Index...>)
      : forwarding_(app), events_((static_cast<void>(Index), forwarding_)...) {}

  CXlEventForwarding forwarding_;
  XlForAllEvents<Itself> events_;
};

}  // namespace quantiverse
