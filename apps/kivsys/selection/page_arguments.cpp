#include "apps/kivsys/selection/page_arguments.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

#include "apps/kivsys/selection/natural_order.h"
#include "platform/native_file.h"
#include "platform/separators.h"
#include "survey/survey.h"

namespace kiv {
namespace {

using Pages = std::vector<std::string>;

constexpr char preferredSeparator = static_cast<char>(std::filesystem::path::preferred_separator);

bool isPattern(const std::string& typed) {
  return typed.find_first_of("*?") != std::string::npos;
}

std::string namesOf(const std::vector<Piece>& groups) {
  constexpr std::size_t mostNames = 20;
  std::string names;
  for (std::size_t g = 0; g < groups.size() && g < mostNames; ++g) {
    names += (g == 0 ? "" : ", ") + (groups[g].prefix.empty() ? groups[g].files.front() : groups[g].prefix);
  }
  return groups.size() > mostNames ? names + " and " + std::to_string(groups.size() - mostNames) + " more" : names;
}

/// The pattern that matches the pages of the first group of several pages; else the first page.
std::string patternOf(const std::vector<Piece>& groups) {
  const auto group = std::find_if(groups.begin(), groups.end(),
                                  [](const Piece& piece) { return piece.files.size() > 1 && !piece.prefix.empty(); });
  if (group == groups.end()) {
    return groups.front().files.front();
  }
  const std::string& first = group->files.front();
  return first.substr(0, group->prefix.size()) + "*" + first.substr(first.rfind('.'));
}

/// What a folder has.
struct FolderGroups {
  std::vector<Piece> pages;
  std::vector<Piece> results;
};

/// What a name of the core leads to.
struct Entry {
  std::string path;
  PathKind kind;
};

/// Only what is not there as it is written needs a search.
Entry entryOf(ConsoleSystem& system, const std::string& name) {
  Entry entry{NativeSystem::exactPath(name), PathKind::missing};
  entry.kind = kindOf(entry.path);
  if (entry.kind == PathKind::missing) {
    entry.path = system.diskName(name);
    entry.kind = kindOf(entry.path);
  }
  return entry;
}

/// The groups of pages in a folder, which the core names; "typed" is what users call it, with a separator.
FolderGroups groupsIn(ConsoleSystem& system, const std::string& folder, const std::string& typed, Pages& leftOut) {
  const std::string start = folder + (endsWithBackslash(system, folder) ? "" : "\\");
  Pages files;
  for (const FolderEntry& entry : system.listFolder(start)) {
    if (entryOf(system, start + entry.name).kind == PathKind::file) {
      files.push_back(entry.name);
    }
  }
  for (const std::string& page : removeRecovered(system, files)) {
    leftOut.push_back(typed + page + recoveredWords);
  }
  std::vector<Piece> results = removeReserved(system, files);
  for (const Piece& group : files.empty() ? std::vector<Piece>() : results) {
    leftOut.push_back(reservedWords(group, typed));
  }
  return {piecesOf(system, files), std::move(results)};
}

/// Whether it is a file that is not named as pages are.
bool isMisnamed(const Piece& piece) {
  return piece.prefix.ends_with(".MUS");
}

/// Whether there is a folder in the folder, which the disk names.
bool hasFolders(const std::string& folder) {
  std::error_code failure;
  std::filesystem::directory_iterator entry(folder, failure);
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    std::error_code unknown;
    if (entry->is_directory(unknown)) {
      return true;
    }
  }
  return false;
}

/// What is said of a folder without pages. Results are pages for commands that look at one page, and for no others.
std::string noPagesWords(ConsoleSystem& system, const std::string& typed, const std::string& folder,
                         const std::vector<Piece>& results) {
  if (!results.empty()) {
    const Pages& files = results.front().files;
    return "no pages in the folder " + typed + ", only results (" + files.front() +
           (files.size() > 1 ? " to " + files.back() : "") +
           "), which 'kivsys draw' and 'kivsys verify --result' read; pages of your own need another name than " +
           files.front();
  }
  return "no pages in the folder " + typed +
         (hasFolders(system.diskName(folder)) ? "; 'kivsys survey' analyzes the pieces in its subfolders" : "");
}

std::variant<Pages, std::string> pagesOfFolder(ConsoleSystem& system, const std::string& typed, Pages& leftOut) {
  const std::string folder = system.fullName(withoutEndSeparators(system, typed));
  if (const auto failure = listFailure(system.diskName(folder))) {
    return "cannot list the folder " + typed + ": " + *failure;
  }
  const std::string start = typed + (endsWithSeparator(system, typed) ? "" : std::string(1, preferredSeparator));
  auto [groups, results] = groupsIn(system, folder, start, leftOut);
  if (groups.empty() && system.upperCase(typed).ends_with(".MUS")) {
    return Pages{typed};  // a page that cannot be read
  }
  if (groups.empty()) {
    return noPagesWords(system, typed, folder, results);
  }
  if (groups.size() > 1) {
    return typed + " has pages of several groups, name those of one (as in " + start + patternOf(groups) +
           "): " + namesOf(groups) +
           (std::any_of(groups.begin(), groups.end(), isMisnamed)
                ? "; names of pages are letters, digits, optionally one letter, and the suffix, as PIECE012B.MUS"
                : "");
  }
  Pages pages = std::move(groups.front().files);
  std::sort(pages.begin(), pages.end(), [&](const std::string& a, const std::string& b) {
    return comesBefore(system.upperCase(a), system.upperCase(b));
  });
  for (std::string& page : pages) {
    page.insert(0, start);
  }
  return pages;
}

std::optional<std::string> refusalOf(const std::string& beyond, const std::string& typed, const std::string& what) {
  return beyond.empty() ? std::nullopt
                        : std::optional("a " + (beyond == typed ? what : "folder") +
                                        " whose name holds a backslash cannot be used: " + beyond);
}

}  // namespace

std::optional<std::string> refusalOfName(const std::string& typed, const std::string& what) {
  return refusalOf(NativeSystem::beyondNames(typed), typed, what);
}

std::optional<std::string> refusalOfName(NativeSystem& system, const std::string& typed, const std::string& what) {
  return refusalOf(system.beyondKnownNames(typed), typed, what);
}

std::optional<std::string> refusalOfNewName(const std::string& typed, const std::string& what) {
  return refusalOf(NativeSystem::beyondNewNames(typed), typed, what);
}

std::optional<std::string> whyNotOneFolder(ConsoleSystem& system, const std::vector<std::string>& arguments) {
  std::set<std::string> folders;
  std::string names;
  for (const std::string& argument : arguments) {
    const Entry entry = entryOf(system, system.fullName(withoutEndSeparators(system, argument)));
    if (entry.kind == PathKind::folder && folders.insert(entry.path).second) {
      names += (names.empty() ? "" : ", ") + argument;
    }
  }
  return folders.size() < 2
             ? std::nullopt
             : std::optional("the pages of one run are in one folder, and these are " + std::to_string(folders.size()) +
                             ": " + names + "; 'kivsys survey' analyzes the pieces of several folders");
}

std::variant<Pages, std::string> pagesMeantBy(ConsoleSystem& system, const std::string& argument, Pages& leftOut) {
  if (argument == "-") {
    return "pages are read from files, and their list from standard input with --names -";
  }
  Pages pages;
  for (const std::string& typed : NativeSystem::filesMatching(argument)) {
    if (const auto reason = refusalOfName(system, typed, "page file")) {
      return *reason;
    }
    const auto [path, kind] = entryOf(system, system.fullName(withoutEndSeparators(system, typed)));
    if (kind == PathKind::folder) {
      auto found = pagesOfFolder(system, typed, leftOut);
      if (const auto* inside = std::get_if<Pages>(&found)) {
        pages.insert(pages.end(), inside->begin(), inside->end());
        continue;
      }
      return found;
    }
    if (isPattern(typed) && kind == PathKind::missing) {
      return whyUnreadable(typed, path).value_or(typed);
    }
    pages.push_back(typed);
  }
  return pages;
}

std::optional<std::string> whyUnreadable(const std::string& typed, const std::string& path) {
  const auto failure = readFailure(path);
  if (!failure) {
    return std::nullopt;
  }
  const bool isUnmatched = isPattern(typed) && kindOf(path) == PathKind::missing;
  return (isUnmatched ? "no page matches " : "cannot read ") + typed + ": " + *failure;
}

}  // namespace kiv
