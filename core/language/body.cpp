#include "language/body.h"

namespace quantiverse {

void Body::open_body(Cursor& expptr) {
  if (start_.position == nullptr) start_.stop = expptr.stop;
  expptr.stop = start_.stop;
  start_.position = expptr.position;
  end_ = nullptr;
  program_.clear();
  state_ = State::kOpen;
}

bool Body::close_body(const Cursor& expptr) {
  if (state_ == State::kOpen) {
    end_ = expptr.position;
    state_ = State::kClosed;
  }
  return state_ != State::kNone;
}

Cursor Body::replay_start() const {
  Cursor start = start_;
  start.stop = end_;
  return start;
}

}  // namespace quantiverse
