#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// Where a file is to be put.
struct FileDestination {
  std::string path;
  std::string folder;  ///< with its separator; "" for the current one
  std::string mark;    ///< in the name that the file has until it is in its place; "" for the number of the process
};

FileDestination destinationOf(const std::string& path, const std::string& mark);

/// How the names of files begin that are not in their places yet and have a mark.
std::string temporaryStart(const std::string& mark);

/// A file beside its place: whole, on the disk, and closed. It is deleted with this object unless it was put in its
/// place. Any thread can use one, one after the other.
class PreparedFile {
 public:
  PreparedFile() = default;
  PreparedFile(const PreparedFile&) = delete;
  PreparedFile& operator=(const PreparedFile&) = delete;
  ~PreparedFile() { discard(); }

  /// Writes a file of these bytes beside its place, since a move from one disk to another is not atomic. Returns the
  /// failure's text; then nothing is left of it.
  [[nodiscard]] std::optional<std::string> prepare(const FileDestination& destination, std::string_view bytes);
  /// Moves the file, which was prepared, to its place, in one step: it replaces one that is there. Returns the
  /// failure's text; then nothing is left of it.
  [[nodiscard]] std::optional<std::string> place();
  /// The same, but a file that is there stays, and this fails.
  [[nodiscard]] std::optional<std::string> placeIfFree();
  /// Deletes a file that is not in its place.
  void discard();

 private:
  std::optional<std::string> fill(const FileDestination& destination, std::string_view bytes);
  std::optional<std::string> moveToPlace(unsigned long existing);

  std::string path_;  // "" for no file
  std::string target_;
};

}  // namespace kiv
