#include "apps/kivsys/survey/library_walk.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <span>
#include <system_error>

#include "apps/kivsys/selection/natural_order.h"
#include "apps/kivsys/undo/kept_files.h"
#include "base/sha256.h"
#include "mus/format.h"
#include "platform/native_file.h"
#include "survey/number_gaps.h"

namespace kiv {
namespace {

namespace fs = std::filesystem;

PageStamp pageStampOf(const fs::path& file) {
  std::error_code failure;
  return {file.filename().string(), fs::file_size(file, failure),
          static_cast<std::int64_t>(fs::last_write_time(file, failure).time_since_epoch().count())};
}

/// Whether the file can change again and keep its time, as clocks of disks are coarse.
bool hasJustChanged(const fs::path& file) {
  using namespace std::chrono_literals;
  std::error_code failure;
  return fs::file_time_type::clock::now() - fs::last_write_time(file, failure) < 2s;
}

/// The prefix in the spelling of the first page.
std::string shownPrefixOf(NativeSystem& system, const Piece& piece) {
  std::string own = piece.files.front().substr(0, piece.prefix.size());
  return system.upperCase(own) == piece.prefix ? own : piece.prefix;
}

LibraryPiece libraryPiece(NativeSystem& system, const fs::path& folder, const Piece& piece) {
  std::error_code failure;
  const fs::path path = fs::canonical(folder, failure);
  LibraryPiece found{folder.string(),
                     failure ? folder.string() : path.string(),
                     piece.prefix,
                     {},
                     {},
                     "",
                     numberGaps(system, piece.files),
                     shownPrefixOf(system, piece)};
  bool isSettled = true;
  for (const std::string& file : piece.files) {
    found.pages.push_back(system.fullName((folder / file).string()));
    found.stamps.push_back(pageStampOf(folder / file));
    isSettled = isSettled && !hasJustChanged(folder / file);
  }
  if (!isSettled) {
    found.digest = digestOf(found);
  }
  return found;
}

/// Whether this is a folder, or a page by its name, that the core cannot name.
bool isBeyondNames(NativeSystem& system, const fs::path& path, bool isFolder) {
  const std::string name = path.filename().string();
  const bool isWanted = isFolder || !piecesOf(system, {name}).empty();
  const bool hasBackslash = name.find('\\') != std::string::npos;  // on Windows half a character at most
  return isWanted && hasBackslash && !NativeSystem::beyondNewNames(name).empty();
}

/// The pieces of one folder are added to the library; its folders are returned in their order.
std::vector<fs::path> visit(NativeSystem& system, const fs::path& folder, Library& library) {
  std::error_code failure;
  std::vector<std::string> names;
  std::vector<fs::path> below;
  fs::directory_iterator entry(folder, failure);
  for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
    std::error_code unknown;
    if (entry->path().filename() == keptFolderName) {
      continue;  // what undo has kept is no part of the library
    }
    const bool isFolder = entry->is_directory(unknown) && !entry->is_symlink(unknown);
    if (isBeyondNames(system, entry->path(), isFolder)) {
      library.unusable.push_back(entry->path().string());
    } else if (isFolder) {
      below.push_back(entry->path());
    } else if (entry->is_regular_file(unknown)) {
      names.push_back(entry->path().filename().string());
    }
  }
  if (failure) {
    library.unreadable.push_back(folder.string() + ": " + failure.message());
  }
  for (const std::string& name : removeRecovered(system, names)) {
    library.leftOut.push_back((folder / name).string() + recoveredWords);
  }
  for (const Piece& results : removeReserved(system, names)) {
    library.leftOut.push_back(reservedWords(results, (folder / "").string()));
  }
  std::vector<Piece> pieces = piecesOf(system, names);
  std::stable_sort(pieces.begin(), pieces.end(),
                   [](const Piece& a, const Piece& b) { return comesBefore(a.prefix, b.prefix); });
  for (const Piece& piece : pieces) {
    library.pieces.push_back(libraryPiece(system, folder, piece));
  }
  std::sort(below.begin(), below.end(),
            [](const fs::path& a, const fs::path& b) { return comesBefore(a.string(), b.string()); });
  return below;
}

}  // namespace

std::string digestOf(const LibraryPiece& piece) {
  NativeSystem system;
  Sha256 digest;
  for (const std::string& page : piece.pages) {
    const auto file = system.openInput(page);
    std::string content(readableBytes, '\0');
    std::size_t have = 0;
    for (std::size_t got = 1; file && got > 0 && have < content.size(); have += got) {
      got = file->read(std::span(content).subspan(have)).value_or(0);
    }
    content.resize(have);
    digest.update(std::to_string(content.size()) + "\n" + content);
  }
  return digest.hexDigest();
}

Library walkLibrary(NativeSystem& system, const std::vector<std::string>& folders) {
  Library library;
  std::vector<fs::path> toVisit(folders.rbegin(), folders.rend());
  std::set<FileIdentity> visited;  // a folder may be named twice, or lie in another one that is named
  while (!toVisit.empty()) {
    const fs::path folder = toVisit.back();
    toVisit.pop_back();
    const auto identity = identityOf(folder.string());
    if (identity && !visited.insert(*identity).second) {
      continue;
    }
    const auto below = visit(system, folder, library);
    toVisit.insert(toVisit.end(), below.rbegin(), below.rend());
  }
  return library;
}

}  // namespace kiv
