#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numbered_texts.h"
#include "platform/file_stamp.h"

namespace kiv {

/// A file as the core names it, and the file of the disk that is meant.
struct FoundFile {
  std::string name;
  std::string path;                               ///< as the disk has it
  std::optional<FileStamp> stamp = std::nullopt;  ///< of the file when it was found, if that is known
  bool operator==(const FoundFile&) const = default;
};

/// Files as the core names them, with their paths on the disk, in their order. There can be very many.
class PathTable {
 public:
  /// The paths are kept in the table, which must outlive this.
  explicit PathTable(NumberedTexts& paths) : paths_(paths) {}

  void add(std::string_view name, std::string_view path);
  bool isEmpty() const { return files_.empty(); }
  std::size_t size() const { return files_.size(); }
  std::string_view name(std::size_t file) const { return names_[files_[file].name]; }
  std::string_view path(std::size_t file) const { return paths_[files_[file].path]; }
  /// The path of the first file with that name; nullopt when there is none.
  std::optional<std::string_view> find(std::string_view name) const;
  /// All of them, which may be much.
  std::vector<FoundFile> files() const;
  std::vector<std::string> names() const;

 private:
  struct File {
    std::uint32_t name = 0;
    std::uint32_t path = 0;
  };
  NumberedTexts& paths_;
  NumberedTexts names_;
  std::vector<std::uint32_t> firstFile_;  // by the numbers of names
  std::vector<File> files_;
};

/// Where the files of a run are. The tables are the console's.
struct FilePaths {
  const PathTable* pages = nullptr;    ///< null for none
  const PathTable* written = nullptr;  ///< null for none

  bool isEmpty() const { return (pages == nullptr || pages->isEmpty()) && (written == nullptr || written->isEmpty()); }
  /// The path of a file that the core names.
  std::optional<std::string_view> find(std::string_view name) const;
};

}  // namespace kiv
