#include "apps/kivsys/commands/valid_pages.h"

#include <nlohmann/json.hpp>

#include "base/counted.h"
#include "input/file_names.h"
#include "platform/console/printable.h"

namespace kiv {

ValidPages::ValidPages(ConsoleHost& console, const std::string& namesFile)
    : console_(console), validation_(validatePages(console.host(), namesFile)), namesFile_(namesFile) {
  for (const SkippedPage& page : validation_.skipped) {
    console_.user().show(page.message);
  }
  if (!anySkipped()) {
    return;
  }
  namesFile_.clear();
  if (anyLeft()) {
    namesFile_ = "(pages that can be read)";  // no file can have this name
    console_.system().serveNamesFile(namesFile_, validation_.names);
  }
}

std::size_t ValidPages::skippedBefore(const std::string& file) const {
  const auto found = validation_.skippedBefore.find(file);
  return found == validation_.skippedBefore.end() ? 0 : found->second;
}

void ValidPages::addTo(Json& object, bool normalEnd) const {
  object["pages_analysed"] = normalEnd ? Json(count()) : Json();
  object["skipped"] = skippedJson();
}

std::string ValidPages::summary() const {
  std::string text =
      counted(validation_.pages, "page") + " analyzed, " + std::to_string(validation_.skipped.size()) + " skipped";
  const char* separator = ": ";
  const auto nameOf = [&](const std::string& file) { return printable(withoutPath(console_.system(), file)); };
  for (const SkippedPage& page : validation_.skipped) {
    text += separator + nameOf(page.namedFile());
    const char* before = " (and with it ";
    for (const std::string& file : page.otherFiles()) {
      text += before + nameOf(file);
      before = ", ";
    }
    text += page.otherFiles().empty() ? "" : ")";
    separator = ", ";
  }
  return text + "\n";
}

Json ValidPages::skippedJson() const {
  Json all = Json::array();
  for (std::size_t p = 0; p < validation_.skipped.size(); ++p) {
    const SkippedPage& page = validation_.skipped[p];
    Json files = Json::array();
    for (const std::string& file : page.files) {
      files.push_back(NativeSystem::toUtf8(file));
    }
    all.push_back({{"files", files}, {"code", page.message.code}, {"message", p}});
  }
  return all;
}

}  // namespace kiv
