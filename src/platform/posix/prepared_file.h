#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

struct FilesUnderWay;

/// Where a file is to be put: all that must be known of it, so that any thread can put it there.
struct FileDestination {
  std::string path;                             ///< what a link of the name leads to
  std::string folder;                           ///< with its separator; "" for the current one
  std::string mark;                             ///< in the name that the file has until it is in its place
  unsigned mode = 0;                            ///< of a file that is new
  bool isFolderCurrent = false;                 ///< what is known of the folder is what it holds
  std::shared_ptr<const FilesUnderWay> others;  ///< null for a file that has nothing in common with others
};

/// How the names of files begin that are not in their places yet, with or without a mark.
std::string temporaryStart(const std::string& mark);

/// A file beside its place: whole, on the disk, and closed. It is deleted with this object unless it was put in its
/// place. Any thread can use one, one after the other.
class PreparedFile {
 public:
  PreparedFile() = default;
  PreparedFile(const PreparedFile&) = delete;
  PreparedFile& operator=(const PreparedFile&) = delete;
  ~PreparedFile() { discard(); }

  /// Writes a file of these bytes beside its place. Returns the failure's text; then nothing is left of it.
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

  std::string path_;  // "" for no file
  std::string target_;
};

}  // namespace kiv
