#pragma once

#include <utility>

#include "platform/win32/windows_api.h"

namespace kiv {

/// A handle of the system, closed with its owner.
class Handle {
 public:
  Handle() = default;
  /// Owns the handle; both values that stand for none are understood.
  explicit Handle(HANDLE value) : value_(value == INVALID_HANDLE_VALUE ? nullptr : value) {}
  Handle(Handle&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}
  /// Swaps the handles: the one that this had is closed with the other object.
  Handle& operator=(Handle&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (isOpen()) {
      CloseHandle(value_);
    }
  }

  HANDLE get() const { return value_; }
  bool isOpen() const { return value_ != nullptr; }

 private:
  HANDLE value_ = nullptr;
};

}  // namespace kiv
