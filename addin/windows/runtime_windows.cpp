// The threads of POSIX, as far as the C++ runtime inside of this library asks for them: for
// exceptions, and for static objects of functions. The usual implementation keeps a slot and
// handles of every thread that it has seen, and leaves them to the process when a library goes that
// it is linked into. An add-in may be loaded and unloaded any number of times.
#include <pthread.h>
#include <sched.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <utility>

#include "addin/windows/windows.h"

namespace __gnu_cxx {
void __freeres();  // the runtime's memory for exceptions when there is no other; no header has it
}

namespace quantiverse {
namespace {

// One lock stands for every mutex of the runtime. They are held for a moment, so sharing it costs
// nothing, and it needs neither memory nor an end: the last of them is taken when this library is
// almost gone. The same thread may take it again, as it may some of the runtime's.
class RecursiveLock {
 public:
  void Lock() {
    const DWORD self = GetCurrentThreadId();
    if (owner_.load(std::memory_order_relaxed) != self) {
      AcquireSRWLockExclusive(&lock_);
      owner_.store(self, std::memory_order_relaxed);
    }
    ++depth_;
  }
  void Unlock() {
    if (--depth_ > 0) return;
    owner_.store(0, std::memory_order_relaxed);  // no thread's number
    ReleaseSRWLockExclusive(&lock_);
  }
  // Others may take the lock in the meantime.
  void Wait(CONDITION_VARIABLE& condition) {
    const unsigned depth = std::exchange(depth_, 0);
    owner_.store(0, std::memory_order_relaxed);
    SleepConditionVariableSRW(&condition, &lock_, INFINITE, 0);
    owner_.store(GetCurrentThreadId(), std::memory_order_relaxed);
    depth_ = depth;
  }

 private:
  SRWLOCK lock_ = SRWLOCK_INIT;
  std::atomic<DWORD> owner_ = 0;
  unsigned depth_ = 0;
};

using Destructor = void (*)(void*);
constexpr std::size_t kMostKeys = 8;

struct Runtime {
  RecursiveLock lock;
  std::size_t key_count = 0;
  std::array<DWORD, kMostKeys> slots{};
  std::array<Destructor, kMostKeys> destructors{};
};

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
constinit Runtime runtime;

// The system calls a destructor under its own convention, which isn't the runtime's.
template <std::size_t Key>
void WINAPI DestroyValue(void* value) {
  if (value != nullptr && runtime.destructors[Key] != nullptr) runtime.destructors[Key](value);
}

template <std::size_t... Keys>
constexpr auto DestructorsOf(std::index_sequence<Keys...>) {
  return std::array<PFLS_CALLBACK_FUNCTION, sizeof...(Keys)>{DestroyValue<Keys>...};
}
constexpr auto kDestructors = DestructorsOf(std::make_index_sequence<kMostKeys>());

bool CreateKey(pthread_key_t& key, Destructor destructor) {
  runtime.lock.Lock();
  const std::size_t number = runtime.key_count;
  const DWORD slot = number < kMostKeys ? FlsAlloc(kDestructors[number]) : FLS_OUT_OF_INDEXES;
  const bool is_created = slot != FLS_OUT_OF_INDEXES;
  if (is_created) {
    runtime.slots[number] = slot;
    runtime.destructors[number] = destructor;
    ++runtime.key_count;
    key = static_cast<pthread_key_t>(number);
  }
  runtime.lock.Unlock();
  return is_created;
}

// REQUIRES: the lock is held.
CONDITION_VARIABLE& ConditionOf(pthread_cond_t* condition) {
  static_assert(sizeof(CONDITION_VARIABLE) == sizeof *condition);
  if (*condition == PTHREAD_COND_INITIALIZER) *condition = 0;
  return *reinterpret_cast<CONDITION_VARIABLE*>(condition);
}

// Gives back what the process would keep. The first static object to be constructed is the last to
// go, when nothing of the runtime is used any more.
class Cleanup {
 public:
  Cleanup() = default;
  Cleanup(const Cleanup&) = delete;
  Cleanup& operator=(const Cleanup&) = delete;
  ~Cleanup() {
    __gnu_cxx::__freeres();
    // Destroys the values of all threads.
    for (std::size_t key = 0; key < runtime.key_count; ++key) FlsFree(runtime.slots[key]);
  }
};
[[gnu::init_priority(101)]] const Cleanup kCleanup;

}  // namespace
}  // namespace quantiverse

using quantiverse::runtime;

extern "C" {

int pthread_mutex_init(pthread_mutex_t*, const pthread_mutexattr_t*) { return 0; }
int pthread_mutex_destroy(pthread_mutex_t*) { return 0; }

int pthread_mutex_lock(pthread_mutex_t*) {
  runtime.lock.Lock();
  return 0;
}

int pthread_mutex_unlock(pthread_mutex_t*) {
  runtime.lock.Unlock();
  return 0;
}

// Whoever waits holds the lock.
int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t*) {
  runtime.lock.Wait(quantiverse::ConditionOf(condition));
  return 0;
}

int pthread_cond_broadcast(pthread_cond_t* condition) {
  runtime.lock.Lock();
  WakeAllConditionVariable(&quantiverse::ConditionOf(condition));
  runtime.lock.Unlock();
  return 0;
}

int pthread_once(pthread_once_t* once, void (*routine)(void)) {
  constexpr pthread_once_t kRunning = 1;
  constexpr pthread_once_t kDone = 2;
  for (;;) {
    const pthread_once_t before = InterlockedCompareExchange(once, kRunning, 0);
    if (before == kDone) return 0;
    if (before == 0) break;
    SwitchToThread();
  }
  routine();
  InterlockedExchange(once, kDone);
  return 0;
}

int pthread_key_create(pthread_key_t* key, void (*destructor)(void*)) {
  return quantiverse::CreateKey(*key, destructor) ? 0 : EAGAIN;
}

// The few keys of the runtime stay until the library goes.
int pthread_key_delete(pthread_key_t) { return 0; }

void* pthread_getspecific(pthread_key_t key) { return FlsGetValue(runtime.slots[key]); }

int pthread_setspecific(pthread_key_t key, const void* value) {
  return FlsSetValue(runtime.slots[key], const_cast<void*>(value)) != 0 ? 0 : ENOMEM;
}

int sched_yield() {
  SwitchToThread();
  return 0;
}

}  // extern "C"
