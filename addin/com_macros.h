#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "addin/services/com_system.h"

// The events of an Excel without AppEvents: it runs macros that properties of its Application
// object name. The add-in puts macros of its own there, and calls on those that it has displaced.
namespace quantiverse {

class CXllApp;

// In the order of their numbers.
enum class XlOldStyleEvent { kSheetActivate, kSheetDeactivate, kCalculate };

class CXlOldStyleMacros {
 public:
  // false: `failure` tells why, and the properties are as they were.
  bool Connect(CXllApp& app, IXlDispatch& application, XlComFailure& failure);
  // Restores the properties.
  void Disconnect(IXlDispatch& application);

  // Excel has run the macro of this event.
  void OnMacro(CXllApp& app, IXlDispatch& application, XlOldStyleEvent event);

 private:
  static constexpr std::size_t kCount = 3;
  static const std::array<const char16_t*, kCount> kProperties;

  void Restore(IXlDispatch& application, std::size_t count);

  std::array<std::u16string, kCount> displaced_;  // what the properties named before
};

}  // namespace quantiverse
