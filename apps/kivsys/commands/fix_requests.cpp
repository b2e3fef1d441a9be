#include "apps/kivsys/commands/fix_requests.h"

#include <limits>
#include <optional>
#include <utility>

#include "apps/kivsys/commands/fix_command.h"
#include "base/number.h"
#include "repair/corrections.h"

namespace kiv {
namespace {

/// FILE:STAFF=ID, of which the file may have colons.
std::optional<repair::IdRequest> requestIn(NativeSystem& system, const std::string& text) {
  const std::size_t equals = text.rfind('=');
  const std::size_t colon = text.rfind(':', equals);
  if (equals == std::string::npos || colon == std::string::npos || colon == 0) {
    return std::nullopt;
  }
  const auto staff = strictNumber(text.substr(colon + 1, equals - colon - 1));
  const auto id = repair::idIn(text.substr(equals + 1));
  if (!staff || !id) {
    return std::nullopt;
  }
  repair::IdRequest request;
  request.origin = "--set " + text;
  request.page = nameOfPage(system, text.substr(0, colon));
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

}  // namespace

IdRequests readRequests(NativeSystem& system, const FixOptions& options) {
  IdRequests requests = readTables(system, options.corrections);
  for (const std::string& text : options.sets) {
    if (auto request = requestIn(system, text)) {
      requests.requests.push_back(std::move(*request));
    } else {
      requests.errors.push_back("--set " + text + ": not FILE:STAFF=ID with an id from 1 to 32767");
    }
  }
  for (const std::string& text : options.maps) {
    if (auto mapping = mappingIn(text)) {
      requests.mappings.push_back(std::move(*mapping));
    } else {
      requests.errors.push_back("--map " + text + ": not OLD=NEW with a new id from 1 to 32767");
    }
  }
  return requests;
}

}  // namespace kiv
