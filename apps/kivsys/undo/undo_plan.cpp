#include "apps/kivsys/undo/undo_plan.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "apps/kivsys/undo/kept_files.h"
#include "platform/kept_file.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

/// Whether the run, or an undo of it, has left the file in this state.
bool isExpected(const FileChange& change, const std::string& state) {
  const auto has = [&](const std::string& known) {
    return std::find(change.states.begin(), change.states.end(), known) != change.states.end();
  };
  return has(state) || (has(file_state::anything) && state != file_state::other);
}

/// Whether a file of the same bytes is the old one itself: before the change both names are those of one file, and a
/// copy has the time of its original.
bool isUntouched(const std::string& path, const std::string& kept) {
  const auto now = stampOf(path);
  const auto old = stampOf(kept);
  return now && old && (now->identity == old->identity || now->changed == old->changed);
}

/// A name beside a file that is free, or that an undo that was stopped has given to the old file.
std::string oldNameFor(const std::string& path, const std::string& kept) {
  const auto old = identityOf(kept);
  std::string name = path + ".old";
  for (int n = 2; entryKindOf(name) != EntryKind::missing && identityOf(name) != old; ++n) {
    name = path + ".old" + std::to_string(n);
  }
  return name;
}

/// Nothing is lost: a file that was changed stays, and the old one as well.
void leaveFile(const FileChange& change, const std::string& now, UndoPlan& plan) {
  const std::string kept = change.kept.empty() ? "" : keptPathOf(change);
  const std::string old = kept.empty() ? file_state::missing : stateOf(kept);
  if (old == file_state::missing) {
    plan.left.push_back({change.path, "", ""});
  } else if (now == file_state::missing && old == change.before) {
    plan.restored.push_back({change.path, kept});
  } else {
    plan.left.push_back({change.path, kept, oldNameFor(change.path, kept)});
  }
}

void planFile(const FileChange& change, ChangedFiles changed, UndoPlan& plan) {
  const std::string now = stateOf(change.path);
  if (!isExpected(change, now)) {
    if (changed == ChangedFiles::stay) {
      leaveFile(change, now, plan);
    } else {
      plan.refusals.push_back(change.path + " has changed since");
    }
    return;
  }
  if (change.kept.empty()) {
    if (now != file_state::missing) {
      plan.removed.push_back(change.path);
    }
    return;
  }
  const std::string kept = keptPathOf(change);
  const std::string old = stateOf(kept);
  if (old == change.before) {
    if (now != change.before || !isUntouched(change.path, kept)) {
      plan.restored.push_back({change.path, kept});
    }
  } else if (now != change.before) {  // else the run was stopped while it kept the file
    if (changed == ChangedFiles::stay) {
      leaveFile(change, now, plan);
    } else {
      plan.refusals.push_back(
          "the old " + change.path +
          (old == file_state::missing ? " is no longer " + kept : ", " + kept + ", has changed since"));
    }
  }
}

std::optional<std::string> failed(const std::string& path, const std::optional<std::string>& failure) {
  return failure ? std::optional("cannot change " + path + ": " + *failure) : std::nullopt;
}

/// Gives the old files of those that stay their new names, before what the run has kept is removed.
std::optional<std::string> setAside(const std::vector<UndoPlan::Left>& files) {
  for (const UndoPlan::Left& file : files) {
    if (file.oldName.empty() || identityOf(file.oldName) == identityOf(file.kept)) {
      continue;
    }
    if (auto failure = failed(file.oldName, keepFile(file.kept, file.oldName))) {
      return failure;
    }
  }
  return std::nullopt;
}

}  // namespace

UndoPlan planUndo(const Journal& journal, ChangedFiles changed) {
  UndoPlan plan;
  for (const std::string& file : unknownKeptFiles(journal)) {
    plan.refusals.push_back(file + " is an old file that the journal does not know: the journal is damaged");
    plan.onlyChanged = false;
  }
  std::for_each(journal.files.rbegin(), journal.files.rend(),
                [&](const FileChange& change) { planFile(change, changed, plan); });
  std::copy_if(journal.madeFolders.rbegin(), journal.madeFolders.rend(), std::back_inserter(plan.folders),
               [](const std::string& folder) { return realFolder(folder) == folder; });
  return plan;
}

std::optional<std::string> carryOut(const UndoPlan& plan, const Journal& journal) {
  if (auto failure = setAside(plan.left)) {
    return failure;
  }
  for (const UndoPlan::Restored& file : plan.restored) {
    if (auto failure = failed(file.path, moveOver(file.kept, file.path))) {
      return failure;
    }
  }
  for (const std::string& path : plan.removed) {
    if (auto failure = failed(path, removeEntry(path))) {
      return failure;
    }
  }
  std::set<std::string> folders;
  for (const JournalFolder& folder : journal.folders) {
    folders.insert(folder.path);
  }
  for (const std::string& folder : plan.folders) {
    folders.insert(folderAbove(folder));
  }
  const auto flushAll = [&]() -> std::optional<std::string> {
    for (const std::string& folder : folders) {
      if (auto failure = realFolder(folder).empty() ? std::nullopt : failed(folder, flushFolderAt(folder))) {
        return failure;
      }
    }
    return std::nullopt;
  };
  if (auto failure = flushAll()) {
    return failure;
  }
  removeKeptFiles(journal);
  for (const std::string& folder : plan.folders) {
    removeEmptyFolder(folder);
  }
  return flushAll();
}

}  // namespace kiv
