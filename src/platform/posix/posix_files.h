#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <sys/stat.h>
#include <sys/types.h>

#include "platform/files.h"

namespace kiv {

/// The mode of a file that is created, before the user's mask.
constexpr mode_t readableByAll = 0666;

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

/// Null unless the path is a readable file on a disk; folders, pipes and devices are none.
std::unique_ptr<InputFile> openForReading(const std::string& path);
/// Opens the file empty. Null when it cannot be written.
std::unique_ptr<OutputFile> openForWriting(const std::string& path);
/// The open file as one to write to; null when it is not open.
std::unique_ptr<OutputFile> asOutput(Descriptor file);
/// The system's words for the last failure.
std::string lastFailure();

/// Notes which permissions the user withholds from new files. To be called before there are other threads: the system
/// only says it while it withholds none.
void noteWithheldMode();
/// The bits of these permissions.
mode_t withheldMode();

/// Lets the system fetch the file from the disk, unless it is in memory. A hint; it changes nothing else.
void fetchSoon(const Descriptor& file);

/// What a status says of its file.
FileStamp stampOf(const struct stat& status);

/// Throws std::bad_alloc or std::system_error when the last call failed for too little memory or too many open files,
/// which says nothing about the file or folder that it was for.
void checkResources(const std::string& path);
/// Writes all bytes. Returns the failure's text.
std::optional<std::string> writeAll(const Descriptor& file, std::string_view bytes);

}  // namespace kiv
