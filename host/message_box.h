#pragma once

#include "host/xlcall.h"

// Message boxes are the system's. The host sees to it that none waits for a user: each takes the
// next answer that the script has queued, and is noted.
namespace quantiverse::host {

// As long as it lives, the message boxes that its thread shows are answered.
class BoxWatch {
 public:
  BoxWatch();
  BoxWatch(const BoxWatch&) = delete;
  BoxWatch& operator=(const BoxWatch&) = delete;
  ~BoxWatch();

 private:
  [[maybe_unused]] void* hook_ = nullptr;  // the system's, where it has any
};

}  // namespace quantiverse::host
