#include "apps/kivsys/survey/library_walk.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace kiv {
namespace {

namespace fs = std::filesystem;

std::string stampOf(const fs::path& file) {
  std::error_code failure;
  const auto size = fs::file_size(file, failure);
  const auto changed = fs::last_write_time(file, failure).time_since_epoch().count();
  return file.filename().string() + "|" + std::to_string(size) + "|" + std::to_string(changed) + "\n";
}

/// The pieces of one folder are added to the library; its folders are returned in their order.
std::vector<fs::path> visit(NativeSystem& system, const fs::path& folder, Library& library) {
  std::error_code failure;
  std::vector<std::string> names;
  std::vector<fs::path> below;
  fs::directory_iterator entry(folder, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    std::error_code unknown;
    if (entry->is_directory(unknown) && !entry->is_symlink(unknown)) {
      below.push_back(entry->path());
    } else if (entry->is_regular_file(unknown)) {
      names.push_back(entry->path().filename().string());
    }
  }
  if (failure) {
    library.unreadable.push_back(folder.string());
  }
  for (const Piece& piece : piecesOf(system, names)) {
    LibraryPiece found{folder.string(), piece.prefix, {}, ""};
    for (const std::string& file : piece.files) {
      found.pages.push_back(system.fullName((folder / file).string()));
      found.stamp += stampOf(folder / file);
    }
    library.pieces.push_back(std::move(found));
  }
  std::sort(below.begin(), below.end());
  return below;
}

}  // namespace

Library walkLibrary(NativeSystem& system, const std::vector<std::string>& folders) {
  Library library;
  std::vector<fs::path> toVisit(folders.rbegin(), folders.rend());
  while (!toVisit.empty()) {
    const fs::path folder = toVisit.back();
    toVisit.pop_back();
    const auto below = visit(system, folder, library);
    toVisit.insert(toVisit.end(), below.rbegin(), below.rend());
  }
  return library;
}

}  // namespace kiv
