#include "apps/kivsys/selection/selected_pages.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "apps/kivsys/selection/named_input.h"
#include "apps/kivsys/selection/names_list.h"
#include "apps/kivsys/selection/page_arguments.h"
#include "apps/kivsys/selection/page_finder.h"
#include "platform/bounded_file.h"
#include "platform/console/standard_input.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

/// No file can have this name.
constexpr const char* commandLine = "(command line)";

/// Where the list is, as the core names it.
std::string nameOfList(ConsoleSystem& system, const std::string& list, const PageSearch& search) {
  std::string full = system.fullName(list);
  if (system.openInput(full)) {
    return full;
  }
  const std::string inRunsFolder = search.folder + "\\" + NativeSystem::coreName(list);
  return system.openInput(inRunsFolder) ? inRunsFolder : full;
}

std::optional<std::string> textOf(BoundedContent content, const std::string& list, SelectedPages& selected) {
  if (content.isTooLarge) {
    selected.errors.push_back(list + " " + tooLarge(most_bytes::namesFile, "a names file"));
  } else if (!content.bytes) {
    selected.errors.push_back("cannot read " + list + ": " +
                              readFailure(selected.listPath).value_or("An I/O error occurred"));
  }
  return std::move(content.bytes);
}

/// The text of the list. Nullopt when it cannot be read, for which there is an error then.
std::optional<std::string> readList(ConsoleSystem& system, const std::string& list, const PageSearch& search,
                                    SelectedPages& selected) {
  if (list == standardInput) {
    selected.namesFile = list;
    return textOf(readStandardInput(most_bytes::namesFile), list, selected);
  }
  const std::string name = nameOfList(system, list, search);
  selected.listPath = system.diskName(name);
  const bool isInRunsFolder = name != system.fullName(list);
  selected.namesFile = isInRunsFolder ? NativeSystem::coreName(list) : name;
  return textOf(readBounded(system, name, most_bytes::namesFile), list, selected);
}

bool isFile(NativeSystem& system, const std::string& typed) {
  return !typed.empty() && kindOf(system.diskName(system.fullName(typed))) == PathKind::file;
}

/// The pages of a list. A plain path is meant as it is written: with the blanks at its end, and even if it begins like
/// a comment, when there is such a file.
std::vector<ListedPage> pagesIn(NativeSystem& system, NamesList list) {
  std::vector<ListedPage> pages = std::move(list.pages);
  const bool isPlain = std::none_of(pages.begin(), pages.end(), [](const ListedPage& page) { return page.isRecord; });
  if (!isPlain) {
    return pages;
  }
  for (ListedPage& page : pages) {
    page.name = page.whole != page.name && isFile(system, page.whole) ? page.whole : page.name;
  }
  for (const ListedPage& comment : list.comments) {
    const std::string& name = isFile(system, comment.whole) ? comment.whole : comment.name;
    if (isFile(system, name)) {
      pages.push_back({name, comment.line, false, comment.whole});
    }
  }
  std::stable_sort(pages.begin(), pages.end(), [](const auto& a, const auto& b) { return a.line < b.line; });
  return pages;
}

}  // namespace

bool refreshStamps(SelectedPages& pages) {
  bool areTheSame = true;
  for (FoundFile& page : pages.pages) {
    const auto stamp = stampOf(page.path);
    areTheSame = areTheSame && stamp && stamp == page.stamp;
    page.stamp = stamp;
  }
  return areTheSame;
}

SelectedPages findTypedPages(ConsoleSystem& system, const std::vector<std::string>& typed, const PageSearch& search) {
  SelectedPages selected;
  selected.namesFile = commandLine;
  const NativeSystem::FolderMemory memory(system);
  if (const auto reason = whyNotOneFolder(system, typed)) {
    selected.errors.push_back(*reason);
    return selected;
  }
  PageFinder finder(system, search);
  for (const std::string& argument : typed) {
    const auto meant = pagesMeantBy(system, argument, selected.leftOut);
    if (const auto* problem = std::get_if<std::string>(&meant)) {
      selected.errors.push_back(*problem);
      continue;
    }
    for (const std::string& page : std::get<std::vector<std::string>>(meant)) {
      if (std::string problem = finder.add({system.fullName(page), page, ""}); !problem.empty()) {
        selected.errors.push_back(std::move(problem));
      }
    }
  }
  selected.isReordered = !search.keepsOrder && finder.putIntoNaturalOrder();
  std::move(finder).giveTo(selected);
  return selected;
}

SelectedPages findListedPages(ConsoleSystem& system, const std::string& list, const PageSearch& search) {
  SelectedPages selected;
  const auto text = readList(system, list, search, selected);
  NamesList lines = readNamesList(text.value_or(""));
  const auto placeOf = [&](std::size_t line) { return list + ":" + std::to_string(line) + ": "; };
  std::vector<std::pair<std::size_t, std::string>> errors;
  for (const ListError& error : lines.errors) {
    errors.emplace_back(error.line, placeOf(error.line) + error.text);
  }
  const NativeSystem::FolderMemory memory(system);
  PageFinder finder(system, search);
  for (const ListedPage& page : pagesIn(system, std::move(lines))) {
    const std::string name = page.isRecord ? page.name : system.fullName(page.name);
    if (std::string problem = finder.add({name, page.name, placeOf(page.line)}); !problem.empty()) {
      errors.emplace_back(page.line, std::move(problem));
    }
  }
  std::stable_sort(errors.begin(), errors.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& [line, error] : errors) {
    selected.errors.push_back(std::move(error));
  }
  std::move(finder).giveTo(selected);
  return selected;
}

}  // namespace kiv
