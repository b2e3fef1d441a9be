#include "apps/kivsys/undo/kept_files.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <system_error>

#include "base/sha256.h"
#include "platform/console/native_system.h"
#include "platform/kept_file.h"
#include "platform/native_file.h"

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

/// The names in a folder; none when it cannot be listed.
std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code failure;
  for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    try {
      names.push_back(entry->path().filename().string());
    } catch (const std::system_error&) {
      continue;  // a name beyond the code page: no run has made it
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// What a hidden folder has of a run that its journal does not know.
struct Unknown {
  std::vector<std::string> onlyCopies;
  std::vector<std::string> secondNames;  ///< of files beside the folder
};

Unknown unknownIn(const std::string& folder, const Journal& journal) {
  Unknown unknown;
  const std::string keptFolder = keptFolderOf(folder);
  std::set<std::string> known;
  for (const FileChange& change : journal.files) {
    known.insert(change.kept);
  }
  std::optional<std::set<FileIdentity>> beside;
  for (const std::string& name : namesIn(keptFolder)) {
    if (!name.starts_with(journal.id + "-") || known.contains(name)) {
      continue;
    }
    if (!beside) {
      beside.emplace();
      for (const std::string& other : namesIn(folder)) {
        if (const auto identity = identityOf(pathIn(folder, other))) {
          beside->insert(*identity);
        }
      }
    }
    const std::string path = pathIn(keptFolder, name);
    const auto identity = identityOf(path);
    (identity && beside->contains(*identity) ? unknown.secondNames : unknown.onlyCopies).push_back(path);
  }
  return unknown;
}

/// Removes what a run that was stopped has left of files that it was about to put in place.
void removeTemporaryFiles(const std::string& folder, const std::string& run) {
  for (const std::string& name : namesIn(folder)) {
    const std::string path = pathIn(folder, name);
    if (name.starts_with(temporaryStart(run)) && entryKindOf(path) == EntryKind::file) {
      static_cast<void>(removeEntry(path));
    }
  }
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

std::vector<std::string> unknownKeptFiles(const Journal& journal) {
  std::vector<std::string> files;
  for (const JournalFolder& folder : journal.folders) {
    const auto unknown = unknownIn(folder.path, journal).onlyCopies;
    files.insert(files.end(), unknown.begin(), unknown.end());
  }
  return files;
}

void removeKeptFiles(const Journal& journal) {
  for (const FileChange& change : journal.files) {
    if (!change.kept.empty()) {
      static_cast<void>(removeEntry(keptPathOf(change)));
    }
  }
  for (const JournalFolder& folder : journal.folders) {
    removeTemporaryFiles(folder.path, journal.id);
    const std::string kept = keptFolderOf(folder.path);
    if (entryKindOf(kept) == EntryKind::other) {
      for (const std::string& path : unknownIn(folder.path, journal).secondNames) {
        static_cast<void>(removeEntry(path));
      }
      removeEmptyFolder(kept);
    }
  }
}

}  // namespace kiv
