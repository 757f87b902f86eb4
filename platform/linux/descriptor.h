#pragma once

// Owns a file descriptor and closes it.

#include <unistd.h>

#include <utility>

namespace platform {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int value) : value_(value) {}
  Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Descriptor() {
    if (value_ >= 0) close(value_);
  }

  int Get() const { return value_; }
  bool IsOpen() const { return value_ >= 0; }
  int Release() { return std::exchange(value_, -1); }

 private:
  int value_ = -1;
};

}  // namespace platform
