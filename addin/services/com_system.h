#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <variant>

#include "addin/services/event_receiver.h"

// What attaching to Excel asks of the system: its component objects, and its windows. Windows has
// all this; elsewhere nothing implements these interfaces but tests. Every operation is one call of
// the system or a few, so that what is decided between calls is decided in portable code. Main
// thread only.
namespace quantiverse {

using XlComResult = std::uint32_t;  // an HRESULT

inline constexpr XlComResult kComDone = 0;
constexpr bool ComFailed(XlComResult result) { return result >= 0x80000000; }

// The last of the calls that an operation has made: the one that failed, if `result` says so.
struct XlComStep {
  const char16_t* call;
  XlComResult result;

  [[nodiscard]] bool Failed() const { return ComFailed(result); }
};

class IXlDispatch;
using XlDispatchPtr = std::shared_ptr<IXlDispatch>;

// A variant. Types that aren't here are the first.
using XlComValue = std::variant<std::monostate, std::int32_t, bool, std::u16string, XlDispatchPtr>;

// How a member of an object is meant.
enum class XlComUse : std::uint16_t { kMethod = 1, kGet = 2, kPut = 4 };

inline constexpr std::uint32_t kUserLocale = 1024;
inline constexpr std::uint32_t kSystemLocale = 2048;
inline constexpr std::uint32_t kEnglishLocale = 1033;

struct XlComInvocation {
  std::int32_t member;
  std::uint32_t locale;
  XlComUse use;
  std::span<const XlComValue> arguments;  // the first one first; what kPut puts is the last
  bool wants_bool = false;  // the answer is coerced to one; one that can't be is a failure
};

// Keeps a sink with an object: destroyed, it takes the sink back. Nothing arrives after that.
class IXlComConnection {
 public:
  IXlComConnection() = default;
  IXlComConnection(const IXlComConnection&) = delete;
  IXlComConnection& operator=(const IXlComConnection&) = delete;
  virtual ~IXlComConnection() = default;
};

// A reference to an object's IDispatch.
class IXlDispatch {
 public:
  IXlDispatch() = default;
  IXlDispatch(const IXlDispatch&) = delete;
  IXlDispatch& operator=(const IXlDispatch&) = delete;
  virtual ~IXlDispatch() = default;

  virtual XlComResult GetIdOfName(const char16_t* name, std::uint32_t locale,
                                  std::int32_t& member) = 0;
  // answer: null for one that nobody wants.
  virtual XlComResult Invoke(const XlComInvocation& invocation, XlComValue* answer) = 0;
  // Makes a sink for Excel's AppEvents and gives it to the object: CreateInstance, QueryInterface,
  // AtlAdvise. The receiver has to outlive the connection.
  virtual XlComStep Advise(IXlEventReceiver& receiver,
                           std::unique_ptr<IXlComConnection>& connection) = 0;
  // Of the object, for traces.
  [[nodiscard]] virtual std::uintptr_t Address() const = 0;
};

// The objects of the running object table.
class IXlRunningObjects {
 public:
  IXlRunningObjects() = default;
  IXlRunningObjects(const IXlRunningObjects&) = delete;
  IXlRunningObjects& operator=(const IXlRunningObjects&) = delete;
  virtual ~IXlRunningObjects() = default;

  // false: there are no more. Null for an object that can't be had, or can't be asked anything.
  virtual bool Next(XlDispatchPtr& object) = 0;
};

struct XlClassId {
  std::array<std::uint8_t, 16> bytes{};
};

class IXlComSystem {
 public:
  IXlComSystem() = default;
  IXlComSystem(const IXlComSystem&) = delete;
  IXlComSystem& operator=(const IXlComSystem&) = delete;

  virtual XlComResult Initialize() = 0;
  virtual void Uninitialize() = 0;

  // Windows are told by their handles; 0 is none.
  // The "XLMAIN" whose handle has this low word.
  virtual std::uintptr_t FindMainWindow(std::uint16_t low_word) = 0;
  // The first "EXCEL7" below a window.
  virtual std::uintptr_t FindWorkbookWindow(std::uintptr_t main_window) = 0;
  // The object behind what a window shows.
  virtual XlComResult ObjectOfWindow(std::uintptr_t window, XlDispatchPtr& object) = 0;

  virtual XlComResult ClassOfProgram(const char16_t* program, XlClassId& id) = 0;
  // GetActiveObject, QueryInterface.
  virtual XlComStep ActiveObject(const XlClassId& id, XlDispatchPtr& object) = 0;
  // CreateBindCtx, GetRunningObjectTable, EnumRunning, Reset.
  virtual XlComStep RunningObjects(std::unique_ptr<IXlRunningObjects>& objects) = 0;

  // For whoever has a debugger.
  virtual void Trace(const std::u16string& text) = 0;

 protected:
  ~IXlComSystem() = default;
};

}  // namespace quantiverse
