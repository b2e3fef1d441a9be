#include "analysis/page_table.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "input/file_names.h"
#include "messages/input_messages.h"

namespace kiv {
namespace {

struct NameParts {
  std::string name;
  std::string number;
  std::string page;
  std::string suffix;
};

NameParts split(const Host& host, const std::string& musFileName) {
  Machine& machine = host.machine;
  NameParts parts{extractPartName(machine, musFileName), extractPartNumb(machine, musFileName),
                  extractPartPage(machine, musFileName), extractPartSuff(machine, musFileName)};
  if (parts.name + parts.number + parts.page + parts.suffix != withoutPath(machine, musFileName)) {
    endProgram(messages::namingProblem(musFileName, host.files.currentFolder()));
  }
  if (parts.number.empty()) {
    endProgram(messages::nameWithoutNumber(musFileName));
  }
  return parts;
}

/// The entries of files with page letters, by page name.
using MultifilePages = std::unordered_map<std::string, std::size_t>;

void addFile(const NameParts& parts, const std::string& path, const std::string& musFileName, MultifilePages& multifile,
             std::vector<PageEntry>& pages) {
  const std::string pageName = parts.name + parts.number + parts.suffix;
  if (parts.page.empty()) {
    pages.push_back({pageName, "", path});
  } else if (parts.page.size() > 1) {
    pages.push_back({musFileName, "", path});
  } else if (const auto known = multifile.find(pageName); known != multifile.end()) {
    pages[known->second].pageLetters += parts.page;
  } else {
    multifile.emplace(pageName, pages.size());
    pages.push_back({pageName, parts.page, path});
  }
}

/// Gives a page of one letter its file's name, and reports letters that are not A, B, C ...
void normalizeLetters(const Host& host, PageEntry& page) {
  constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  if (page.pageLetters.empty() ||
      page.pageLetters == alphabet.substr(0, std::max<std::size_t>(page.pageLetters.size(), 2))) {
    return;
  }
  Machine& machine = host.machine;
  const std::string firstFile = extractPartName(machine, page.pageName) + extractPartNumb(machine, page.pageName) +
                                page.pageLetters.front() + extractPartSuff(machine, page.pageName);
  if (page.pageLetters.size() == 1) {
    page.pageName = firstFile;
    page.pageLetters.clear();
  } else {
    host.user.show(messages::oddPageLetters(page.pageName, page.pageLetters, page.pagePath + firstFile));
  }
}

}  // namespace

std::vector<std::string> filesOf(Machine& machine, const PageEntry& page) {
  if (!page.isMultifile()) {
    return {page.pagePath + withoutPath(machine, page.pageName)};
  }
  const std::string beforeLetter =
      page.pagePath + extractPartName(machine, page.pageName) + extractPartNumb(machine, page.pageName);
  const std::string suffix = extractPartSuff(machine, page.pageName);
  std::vector<std::string> files;
  const std::string lettersUpward(page.pageLetters.rbegin(), page.pageLetters.rend());
  for (const char letter : lettersUpward) {
    std::string file = beforeLetter;
    file += letter;
    files.push_back(file + suffix);
  }
  return files;
}

PageTable groupPages(const Host& host, const NamesTable& names) {
  PageTable table;
  MultifilePages multifile;
  table.pages.reserve(static_cast<std::size_t>(names.nameCount));
  for (int i = 1; i <= names.nameCount; ++i) {
    const std::string& name = names.name(i);
    addFile(split(host, name), justPath(host.machine, name), name, multifile, table.pages);
  }
  for (PageEntry& page : table.pages) {
    normalizeLetters(host, page);
  }
  return table;
}

}  // namespace kiv
