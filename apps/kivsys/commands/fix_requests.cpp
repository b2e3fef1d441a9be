#include "apps/kivsys/commands/fix_requests.h"

#include <limits>
#include <optional>
#include <utility>

#include "apps/kivsys/commands/fix_command.h"
#include "apps/kivsys/corrections/planned_pages.h"
#include "apps/kivsys/safety/input_files.h"
#include "base/number.h"
#include "repair/corrections.h"

namespace kiv {
namespace {

/// PAGE:STAFF=ID, of which the file may have colons. An error, if there is one, is added to the requests.
std::optional<repair::IdRequest> requestIn(ConsoleSystem& system, const std::string& text,
                                           std::vector<std::string>& errors) {
  const auto refuse = [&](const std::string& reason) {
    errors.push_back("--set " + text + ": " + reason);
    return std::nullopt;
  };
  const std::string expected = "not PAGE:STAFF=ID with an id from 1 to 32767";
  const std::size_t equals = text.rfind('=');
  const std::size_t colon = text.rfind(':', equals);
  if (equals == std::string::npos || colon == std::string::npos || colon == 0) {
    return refuse(expected);
  }
  const std::string file = text.substr(0, colon);
  const auto staff = strictNumber(text.substr(colon + 1, equals - colon - 1));
  const auto id = repair::idIn(text.substr(equals + 1));
  if (!staff || !id) {
    return refuse(expected);
  }
  if (isElsewhere(system, file)) {
    return refuse(file + " is none of the pages");
  }
  repair::IdRequest request;
  request.origin = "--set " + text;
  request.page = nameOfPage(system, file);
  request.staff = static_cast<float>(*staff);
  request.newId = *id;
  return request;
}

/// The whole number of 16 bits that the text is.
std::optional<std::int16_t> wholeNumber(const std::string& text) {
  const auto number = strictNumber(text);
  if (!number) {
    return std::nullopt;
  }
  const auto whole = toInt16(*number);
  return whole && static_cast<double>(*whole) == *number ? whole : std::nullopt;
}

/// OLD=NEW
std::optional<repair::IdMapping> mappingIn(const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) {
    return std::nullopt;
  }
  const auto oldId = wholeNumber(text.substr(0, equals));
  const auto newId = repair::idIn(text.substr(equals + 1));
  return oldId && newId ? std::optional(repair::IdMapping{"--map " + text, *oldId, *newId}) : std::nullopt;
}

/// What is wrong with a text that is no mapping.
std::string whyNoMapping(const std::string& text) {
  const std::size_t equals = text.find('=');
  const bool isNewIdRight = equals != std::string::npos && repair::idIn(text.substr(equals + 1));
  return isNewIdRight ? "the old id is no whole number from -32768 to 32767"
                      : "not OLD=NEW with a new id from 1 to 32767";
}

}  // namespace

IdRequests readRequests(ConsoleSystem& system, const FixOptions& options) {
  IdRequests requests = readTables(system, options.corrections);
  for (const std::string& text : options.sets) {
    if (auto request = requestIn(system, text, requests.errors)) {
      requests.requests.push_back(std::move(*request));
    }
  }
  for (const std::string& text : options.maps) {
    if (auto mapping = mappingIn(text)) {
      requests.mappings.push_back(std::move(*mapping));
    } else {
      requests.errors.push_back("--map " + text + ": " + whyNoMapping(text));
    }
  }
  return requests;
}

std::vector<std::string> refusalsInPlace(ConsoleSystem& system, const FixOptions& options, const SelectedPages& pages) {
  InputFiles others;
  for (const std::string& table : options.corrections.files) {
    others.addTyped(system, table);
  }
  for (const std::string& table : pages.tables) {
    others.add(table);
  }
  if (!pages.listPath.empty()) {
    others.add(pages.listPath);
  }
  if (pages.namesFile == "-") {
    others.addStandardInput();
  }
  std::vector<std::string> reasons;
  for (const FoundFile& page : distinctPages(pages.pages)) {
    if (const auto reason = others.refusalToReplace("corrected page", page.path)) {
      reasons.push_back(*reason);
    }
    others.add(page.path);
  }
  return reasons;
}

}  // namespace kiv
