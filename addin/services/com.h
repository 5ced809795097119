#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>

// What the add-in wants of Excel's object model. Only Windows has one: elsewhere there is nothing
// to attach to, and whoever holds a pointer to an attachment holds null.
namespace quantiverse {

// A workbook, a sheet or a range, as far as the add-in asks.
class IXlComObject {
 public:
  IXlComObject() = default;
  IXlComObject(const IXlComObject&) = delete;
  IXlComObject& operator=(const IXlComObject&) = delete;
  virtual ~IXlComObject() = default;

  // Properties; empty if they can't be read.
  [[nodiscard]] virtual std::u16string Name() const = 0;
  [[nodiscard]] virtual std::u16string AddressLocal() const = 0;  // of a range alone
};

// An argument of a macro.
using XlMacroArgument = std::variant<std::int32_t, bool, std::u16string>;

// Why a step of the attachment failed.
struct XlComFailure {
  std::u16string text;       // the failing function's bare name, or a message
  std::uint32_t result = 0;  // its HRESULT; 0 if there is none
};

// The attachment to the Excel that has loaded this add-in: its Application object, and the events
// that this tells of. A process has one at most. Main thread only.
class IXllCom {
 public:
  IXllCom() = default;
  IXllCom(const IXllCom&) = delete;
  IXllCom& operator=(const IXllCom&) = delete;
  virtual ~IXllCom() = default;

  // Finds the Application object. Once for each attachment.
  // false: `failure` tells why; nothing but destroying is left to do.
  virtual bool Init(XlComFailure& failure) = 0;
  // Starts or stops the flow of events; no change does nothing.
  virtual bool Connect(bool on, XlComFailure& failure) = 0;
  // Disconnects, and releases the Application object.
  virtual void Term() = 0;

  // Operations of the Application object. false: the call failed.
  virtual bool GetDisplayAlerts(bool& shown) = 0;
  virtual bool SetDisplayAlerts(bool shown) = 0;
  // answer: takes the macro's answer as a bool, and then one that can't be a bool is a failure too.
  //         Null for an answer that nobody wants.
  virtual bool Run(const std::u16string& macro, std::span<const XlMacroArgument> arguments,
                   bool* answer) = 0;
};

}  // namespace quantiverse
