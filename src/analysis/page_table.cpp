#include "analysis/page_table.h"

#include <string_view>
#include <unordered_map>

#include "analysis/naming_problem.h"
#include "input/file_names.h"

namespace kiv {
namespace {

struct NameParts {
  std::string name;
  std::string number;
  std::string page;
  std::string suffix;
};

NameParts split(Host& host, const std::string& musFileName) {
  NameParts parts{extractPartName(host, musFileName), extractPartNumb(host, musFileName),
                  extractPartPage(host, musFileName), extractPartSuff(host, musFileName)};
  if (parts.name + parts.number + parts.page + parts.suffix != withoutPath(musFileName)) {
    refuseFileName(host, musFileName);
  }
  if (parts.number.empty()) {
    host.fatal("Filename has no numeric part. This is required for KivSystem: " + musFileName);
  }
  return parts;
}

/// The entries that files with page letters made, by page name.
using MultifilePages = std::unordered_map<std::string, std::size_t>;

void addFile(const NameParts& parts, const std::string& musFileName, MultifilePages& multifile,
             std::vector<PageEntry>& pages) {
  const std::string path = justPath(musFileName);
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

void settleLetters(Host& host, PageEntry& page) {
  constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  if (page.pageLetters.size() == 1) {
    page.pageName = extractPartName(host, page.pageName) + extractPartNumb(host, page.pageName) + page.pageLetters +
                    extractPartSuff(host, page.pageName);
    page.pageLetters.clear();
  } else if (page.pageLetters != alphabet.substr(0, page.pageLetters.size())) {
    host.inform("File selection has Page letters that do not start with A or are not consecutive: \r\n" +
                page.pageName + " [" + page.pageLetters + "]\r\n\r\nThis is a warning only. The program will proceed.");
  }
}

}  // namespace

void groupPages(Host& host, const NamesTable& names, std::string& musFileName, PageTable& table) {
  table = {};
  MultifilePages multifile;
  for (int i = 1; i <= names.nameCount; ++i) {
    musFileName = names.name(i);
    addFile(split(host, musFileName), musFileName, multifile, table.pages);
  }
  for (PageEntry& page : table.pages) {
    settleLetters(host, page);
  }
}

}  // namespace kiv
