#include "apps/kivsys/commands/keep_going.h"

#include <iostream>

#include <nlohmann/json.hpp>

#include "diagnostics/problem_codes.h"
#include "input/file_names.h"

namespace kiv {

PagesToGoOn::PagesToGoOn(ConsoleHost& host, const std::string& namesFile)
    : host_(host), judgement_(judgePages(host, namesFile)), namesFile_(namesFile) {
  for (const SkippedPage& page : judgement_.skipped) {
    host_.message(Icon::critical, page.message, Buttons::ok);
  }
  if (!anySkipped()) {
    return;
  }
  namesFile_.clear();
  if (anyLeft()) {
    temporary_ = host_.makeTemporaryFile(judgement_.names);
    namesFile_ = temporary_;
    if (temporary_.empty()) {
      std::cerr << "kivsys: cannot make a names file in the folder for temporary files\n";
    }
  }
}

PagesToGoOn::~PagesToGoOn() {
  if (!temporary_.empty()) {
    host_.deleteFile(temporary_);
  }
}

std::vector<std::string> PagesToGoOn::filesOfMessages() const {
  std::vector<std::string> files;
  for (const SkippedPage& page : judgement_.skipped) {
    files.push_back(page.file);
  }
  return files;
}

std::string PagesToGoOn::summary() const {
  std::string text = std::to_string(judgement_.pages) + (judgement_.pages == 1 ? " page" : " pages") + " analysed, " +
                     std::to_string(judgement_.skipped.size()) + " skipped";
  const char* separator = ": ";
  for (const SkippedPage& page : judgement_.skipped) {
    text += separator + withoutPath(page.file.empty() ? page.files.front() : page.file);
    separator = ", ";
  }
  return text + "\n";
}

Json PagesToGoOn::skippedJson() const {
  Json all = Json::array();
  for (std::size_t p = 0; p < judgement_.skipped.size(); ++p) {
    const SkippedPage& page = judgement_.skipped[p];
    Json files = Json::array();
    for (const std::string& file : page.files) {
      files.push_back(NativeSystem::toUtf8(file));
    }
    all.push_back({{"files", files}, {"code", codeOf(page.message)}, {"message", p}});
  }
  return all;
}

}  // namespace kiv
