#include "tests/music/fitted_pages.h"

#include <sstream>

#include "pagetext/page_text.h"

namespace kiv::test {
namespace {

std::map<std::string, std::string> named(const std::vector<std::string>& texts) {
  std::map<std::string, std::string> pages;
  for (const std::string& text : texts) {
    pages["P" + std::to_string(pages.size() + 1) + ".MUS"] = text;
  }
  return pages;
}

std::map<std::string, std::string> built(std::map<std::string, std::string> pages) {
  for (auto& [name, content] : pages) {
    content = page(content);
  }
  return pages;
}

}  // namespace

FittedPages::FittedPages(const std::vector<std::string>& texts, RestStaves restStaves)
    : FittedPages(Files{named(texts)}, restStaves) {}

FittedPages::FittedPages(const Files& files, RestStaves restStaves) : group_(built(files.texts), false, restStaves) {}

std::vector<std::string> FittedPages::lines(int system) const {
  std::vector<std::string> lines;
  std::istringstream dump(dumpPage(group_.result(system)));
  for (std::string line; std::getline(dump, line);) {
    const std::size_t offset = line.find('@');
    const std::size_t word = offset == std::string::npos ? offset : line.find_first_not_of(' ', line.find(' ', offset));
    if (word != std::string::npos) {
      lines.push_back(line.substr(word));
    }
  }
  return lines;
}

std::string FittedPages::items(int system, int staff, const std::string& type) {
  const std::string begin = type + " " + std::to_string(staff) + " at ";
  std::string found;
  for (const std::string& line : lines(system)) {
    if (line.starts_with(begin)) {
      found += (found.empty() ? "" : "; ") + line.substr(begin.size());
    }
  }
  return found;
}

std::string FittedPages::braces(int system) {
  std::string found;
  for (const std::string& line : lines(system)) {
    if (line.starts_with("barline") &&
        (line.find(" kind 8") != std::string::npos || line.find(" kind 9") != std::string::npos)) {
      found += (found.empty() ? "" : "; ") + line;
    }
  }
  return found;
}

std::vector<std::string> FittedPages::warnings(const std::vector<std::vector<std::int16_t>>& playing) {
  std::vector<CheckedResult> results;
  for (const auto& instruments : playing) {
    results.push_back(
        {ConvertedGroup::resultName(static_cast<int>(results.size()) + 1), {instruments.begin(), instruments.end()}});
  }
  std::vector<std::string> lines;
  for (const kiv::Message& warning : findMusicWarnings(group_.host, results)) {
    const Location& location = warning.location;
    lines.push_back(std::string(warning.code) + " system " + std::to_string(location.system.value_or(0)) +
                    (location.bar ? " bar " + std::to_string(*location.bar) : "") + ": " + warning.text);
  }
  return lines;
}

}  // namespace kiv::test
