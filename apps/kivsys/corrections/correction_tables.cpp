#include "apps/kivsys/corrections/correction_tables.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "apps/kivsys/selection/named_input.h"
#include "base/sha256.h"
#include "input/file_names.h"
#include "platform/bounded_file.h"
#include "platform/console/standard_input.h"
#include "platform/native_file.h"
#include "repair/corrections.h"

namespace kiv {
namespace {

/// How much a confidence counts; a row without one was written by somebody who knows.
int rankOf(const std::string& confidence) {
  if (confidence == "guess") {
    return 0;
  }
  return confidence == "likely" ? 1 : 2;
}

std::optional<std::string> textOf(NativeSystem& system, const std::string& file, IdRequests& requests) {
  const bool isInput = file == standardInput;
  BoundedContent content = isInput ? readStandardInput(most_bytes::corrections)
                                   : readBounded(system, NativeSystem::coreName(file), most_bytes::corrections);
  if (content.isTooLarge) {
    requests.errors.push_back(file + " " + tooLarge(most_bytes::corrections, "a table of corrections"));
  } else if (!content.bytes) {
    const auto reason = isInput ? std::nullopt : readFailure(pathOfTable(system, file));
    requests.errors.push_back("cannot read " + file + ": " + reason.value_or("I/O error"));
  }
  return std::move(content.bytes);
}

std::string noneOfThePages(const std::string& origin, const std::string& file) {
  return origin + ": " + file + " is none of the pages";
}

void addTable(ConsoleSystem& system, const std::string& file, const std::string& only, IdRequests& requests) {
  const auto text = textOf(system, file, requests);
  if (!text) {
    return;
  }
  const repair::Corrections table = repair::readCorrections(*text);
  for (const repair::CorrectionError& error : table.errors) {
    requests.errors.push_back(file + ":" + std::to_string(error.line) + ": " + NativeSystem::fromUtf8(error.reason));
  }
  requests.undecided += table.undecided;
  const std::size_t before = requests.requests.size();
  for (const repair::Correction& row : table.rows) {
    if (!only.empty() && rankOf(row.confidence) < rankOf(only)) {
      ++requests.leftOut;
      continue;
    }
    const std::string named = NativeSystem::fromUtf8(row.file);
    const std::string origin = file + ":" + std::to_string(row.line);
    if (isElsewhere(system, named)) {
      requests.errors.push_back(noneOfThePages(origin, named));
      continue;
    }
    requests.requests.push_back(
        {origin, nameOfPage(system, named), row.isCue, row.staff, row.item, row.oldId, row.newId});
  }
  requests.tables.push_back({file, pathOfTable(system, file), sha256(*text), requests.requests.size() - before});
}

}  // namespace

IdRequests readTables(ConsoleSystem& system, const TableOptions& options) {
  IdRequests requests;
  for (const std::string& file : options.files) {
    addTable(system, file, options.only, requests);
  }
  return requests;
}

std::string pathOfTable(NativeSystem& system, const std::string& file) {
  return file == standardInput ? "" : system.diskName(system.fullName(file));
}

bool isElsewhere(ConsoleSystem& system, const std::string& file) {
  const std::string name = NativeSystem::coreName(file);
  if (withoutPath(system, name) == name) {
    return false;
  }
  const auto identity = identityOf(system.NativeSystem::diskName(system.fullName(file)));
  const std::vector<FoundFile> pages = system.pages();
  return std::none_of(pages.begin(), pages.end(),
                      [&](const FoundFile& page) { return identity && identityOf(page.path) == identity; });
}

std::string nameOfPage(NativeSystem& system, const std::string& file) {
  return system.upperCase(withoutPath(system, NativeSystem::coreName(file)));
}

}  // namespace kiv
