#include "apps/kivsys/undo/kept_files.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "base/sha256.h"
#include "platform/kept_file.h"

namespace kiv {
namespace {

constexpr std::size_t readBytes = std::size_t{64} * 1024;

/// A file that cannot be read is none that a journal knows.
std::string digestOf(const std::string& path) {
  const auto file = openExactly(path);
  if (!file) {
    return file_state::other;
  }
  Sha256 digest;
  std::vector<char> buffer(readBytes);
  while (true) {
    const auto got = file->read(buffer);
    if (!got) {
      return file_state::other;
    }
    if (*got == 0) {
      return digest.hexDigest();
    }
    digest.update({buffer.data(), *got});
  }
}

/// The number in the name of a kept file.
std::size_t numberOf(const std::string& kept) {
  return std::stoul(kept.substr(kept.find('-') + 1));
}

}  // namespace

std::string stateOf(const std::string& path) {
  switch (entryKindOf(path)) {
    case EntryKind::missing:
      return file_state::missing;
    case EntryKind::file:
      return digestOf(path);
    case EntryKind::link:
      return file_state::linkStart + linkTextOf(path);
    case EntryKind::other:
    case EntryKind::unknown:
      break;
  }
  return file_state::other;
}

std::string keptFolderOf(const std::string& folder) {
  return pathIn(folder, keptFolderName);
}

std::string keptPathOf(const FileChange& change) {
  return pathIn(keptFolderOf(folderAbove(change.path)), change.kept);
}

void removeKeptFiles(const Journal& journal) {
  std::size_t last = 0;
  for (const FileChange& change : journal.files) {
    if (!change.kept.empty()) {
      static_cast<void>(removeEntry(keptPathOf(change)));
      last = std::max(last, numberOf(change.kept));
    }
  }
  for (const JournalFolder& folder : journal.folders) {
    const std::string kept = keptFolderOf(folder.path);
    if (entryKindOf(kept) == EntryKind::other) {
      static_cast<void>(removeEntry(pathIn(kept, keptName(journal.id, last + 1))));
      removeEmptyFolder(kept);
    }
  }
}

}  // namespace kiv
