#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// Where a file is to be put, as the platform knows it.
struct FileDestination;

/// How the names of files begin that are not in their places yet and have a mark. What "" means is the platform's.
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
  [[nodiscard]] std::optional<std::string> place() { return moveToPlace(Existing::replaced); }
  /// The same, but a file that is there stays, and this fails.
  [[nodiscard]] std::optional<std::string> placeIfFree() { return moveToPlace(Existing::kept); }
  /// Deletes a file that is not in its place.
  void discard();

 private:
  enum class Existing { replaced, kept };
  std::optional<std::string> moveToPlace(Existing existing);

  // What each platform does in its own way. A file that was begun is at path_, also after a failure.
  std::optional<std::string> fill(const FileDestination& destination, std::string_view bytes);
  static std::optional<std::string> move(const std::string& from, const std::string& to, Existing existing);
  static void remove(const std::string& path);

  std::string path_;  // "" for no file
  std::string target_;
};

}  // namespace kiv
