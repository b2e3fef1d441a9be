#include "apps/kivsys/safety/result_files.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <map>

#include "input/file_names.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "platform/native_file.h"
#include "shell/analysis_run.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

constexpr std::string_view firstNumberAndSuffix = "0001.MUS";
constexpr std::string_view pageSuffix = ".MUS";
constexpr std::size_t digits = 4;

std::string capitals(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return text;
}

std::string numbered(const std::string& stem, std::size_t number) {
  const std::string text = std::to_string(number);
  return stem + std::string(digits - std::min(digits, text.size()), '0') + text + std::string(pageSuffix);
}

/// The number in a result's name, of which the rest after the stem is given; nullopt when no result is named so.
std::optional<std::size_t> numberIn(const std::string& rest) {
  constexpr std::size_t mostDigits = 5;  // of a 16-bit number
  if (!rest.ends_with(pageSuffix) || rest.size() < digits + pageSuffix.size() ||
      rest.size() > mostDigits + pageSuffix.size()) {
    return std::nullopt;
  }
  const std::string text = rest.substr(0, rest.size() - pageSuffix.size());
  if (text.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  const std::size_t number = std::stoul(text);
  return number > 0 && numbered("", number) == rest ? std::optional(number) : std::nullopt;
}

/// The number of results. Without pages that end the analysis there are as many as there can be.
std::size_t countResults(ConsoleSystem& system, const SelectedPages& pages, const PlannedResults& results) {
  OverlayFiles files(system, system);
  files.addFile(pages.namesFile, pages.names);
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, system});
  if (exitCodeOfPart(user, [&] { analyze(program, pages.namesFile, results.allowZeroId); }).value_or(0) != 0) {
    return results.keepGoing ? SIZE_MAX : 0;
  }
  return program.qualifies() && !results.force ? 0 : program.systems.systemCount();
}

/// Why it cannot be known what a folder has; nullopt when it can be, or there is no such folder.
std::optional<std::string> whyNotListed(const std::string& folder) {
  const auto failure = kindOf(folder) == PathKind::folder ? listFailure(folder) : std::nullopt;
  return failure ? std::optional("cannot list the folder of the results, " + folder + ": " + *failure) : std::nullopt;
}

/// The conflicts of results with inputs, by the number of the result.
class Conflicts {
 public:
  Conflicts(ConsoleSystem& system, const SelectedPages& pages, std::string stem)
      : system_(system), pages_(pages), inputs_(pages), stem_(std::move(stem)), upperStem_(system.upperCase(stem_)) {}

  /// A folder that is to be made is none of another case.
  std::map<std::size_t, std::string> find(bool folderIsThere) {
    const std::string folder = justPath(system_, stem_);
    const std::string upperStemOfName = system_.upperCase(withoutPath(system_, stem_));
    for (const FolderEntry& entry : folderIsThere ? system_.listFolder(folder) : std::vector<FolderEntry>()) {
      const std::string name = system_.upperCase(entry.name);
      if (!entry.isFolder && name.starts_with(upperStemOfName)) {
        addFile(numberIn(name.substr(upperStemOfName.size())));
      }
    }
    for (const FoundFile& page : pages_.pages) {
      addName(page);
    }
    return std::move(conflicts_);
  }

 private:
  void addFile(std::optional<std::size_t> number) {
    if (number) {
      const std::string path = system_.outputPath(numbered(stem_, *number));
      if (const auto reason = inputs_.refusalToReplace("result", path)) {
        conflicts_.emplace(*number, *reason);
      }
    }
  }

  /// A result and an input of one name, but for case, would be one file to a run.
  void addName(const FoundFile& page) {
    const std::string name = system_.upperCase(page.name);
    if (!name.starts_with(upperStem_)) {
      return;
    }
    if (const auto number = numberIn(name.substr(upperStem_.size()))) {
      conflicts_.emplace(*number, "the result " + system_.outputPath(numbered(stem_, *number)) +
                                      " has the name of the input " + page.path);
    }
  }

  ConsoleSystem& system_;
  const SelectedPages& pages_;
  InputFiles inputs_;
  std::string stem_;  // of the full names of the results
  std::string upperStem_;
  std::map<std::size_t, std::string> conflicts_;
};

/// The path of a page, without its suffix, up to the number that ends it.
std::string withoutNumber(const std::string& path) {
  const std::size_t last = path.find_last_not_of("0123456789");
  const bool hasName = last != std::string::npos && path[last] != '/' && path[last] != '\\';
  return hasName ? path.substr(0, last + 1) : path;
}

}  // namespace

std::string resultIn(const std::string& typed) {
  constexpr bool isWindows = std::filesystem::path::preferred_separator == '\\';
  const bool hasSeparator = typed.ends_with('/') || (isWindows && typed.ends_with('\\'));
  const bool isNamedResult = capitals(typed).ends_with(firstNumberAndSuffix);  // a folder of that name is in the way
  if (typed.empty() || (!hasSeparator && (isNamedResult || kindOf(typed) != PathKind::folder))) {
    return typed;
  }
  return typed + (hasSeparator ? "" : "/") + "WORK" + std::string(firstNumberAndSuffix);
}

std::optional<std::string> refusalOfResultName(const std::string& typed) {
  const std::string name = capitals(typed);
  if (name.ends_with(firstNumberAndSuffix)) {
    return std::nullopt;
  }
  const bool isPage = name.ends_with(pageSuffix);
  const bool isFolder =
      kindOf(typed) == PathKind::folder || name.find('.', name.find_last_of("/\\") + 1) == std::string::npos;
  const bool hasSeparator = typed.ends_with('/') || typed.ends_with('\\');
  const std::string meant =
      isPage     ? withoutNumber(typed.substr(0, typed.size() - pageSuffix.size())) + std::string(firstNumberAndSuffix)
      : isFolder ? typed + (hasSeparator ? "" : "/") + "WORK" + std::string(firstNumberAndSuffix)
                 : "";
  return "the name of the first result must end in 0001.MUS: " + typed +
         (meant.empty() ? "" : "; name it with --result " + meant);
}

std::string defaultResultFile(ConsoleSystem& system, const FoundFile& firstPage) {
  NamesTable names;
  names.nameCount = 1;
  names.nameList = {system.upperCase(firstPage.name)};
  return firstResultFile(system, names);
}

std::size_t numberOfResult(ConsoleSystem& system, const std::string& firstResult, const std::string& name) {
  const std::string stem = system.upperCase(
      firstResult.substr(0, firstResult.size() - std::min(firstResult.size(), firstNumberAndSuffix.size())));
  const std::string upper = system.upperCase(name);
  return upper.starts_with(stem) ? numberIn(upper.substr(stem.size())).value_or(0) : 0;
}

std::vector<NamedResult> resultsThere(ConsoleSystem& system, const std::string& firstResult) {
  const std::string folder = justPath(system, firstResult);
  std::vector<NamedResult> results;
  for (const FolderEntry& entry : system.listFolder(folder)) {
    const std::size_t number = entry.isFolder ? 0 : numberOfResult(system, firstResult, folder + entry.name);
    if (number > 0) {
      results.push_back({number, folder + entry.name});
    }
  }
  std::sort(results.begin(), results.end(),
            [](const NamedResult& a, const NamedResult& b) { return a.number < b.number; });
  return results;
}

std::vector<std::string> refusalsOfResults(ConsoleSystem& system, const SelectedPages& pages,
                                           const PlannedResults& results) {
  if (pages.pages.empty()) {
    return {};
  }
  const std::string first =
      results.firstResultFile.empty() ? defaultResultFile(system, pages.pages.front()) : results.firstResultFile;
  const std::string stem = first.substr(0, first.size() - firstNumberAndSuffix.size());
  const std::string start = justPath(system, stem);
  const std::string folder =
      results.firstResultFile.empty() ? system.outputPath(start) : NativeSystem::exactPath(start);
  if (const auto reason = whyNotListed(folder)) {
    return {*reason};
  }
  const auto conflicts = Conflicts(system, pages, stem).find(kindOf(folder) == PathKind::folder);
  if (conflicts.empty()) {
    return {};
  }
  const std::size_t count = countResults(system, pages, results);
  std::vector<std::string> reasons;
  for (const auto& [number, reason] : conflicts) {
    if (number <= count) {
      reasons.push_back(reason);
    }
  }
  return reasons;
}

}  // namespace kiv
