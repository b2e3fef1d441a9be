#pragma once

#include <memory>
#include <string>

#include "platform/host.h"

namespace kiv {

/// An open file descriptor, closed with its owner.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor();

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }
  /// Gives the descriptor away; the caller closes it.
  int release();

 private:
  int number_;
};

/// Null when the path is no file on a disk that can be read; folders, pipes and devices are none.
std::unique_ptr<InputFile> openForReading(const std::string& path);
/// Null when the path is no file that can be written; otherwise it is empty now.
std::unique_ptr<OutputFile> openForWriting(const std::string& path);
/// The system's words for the last failure.
std::string lastFailure();
/// Writes all bytes; the failure's text when the medium does not take them.
std::optional<std::string> writeAll(const Descriptor& file, std::string_view bytes);

}  // namespace kiv
