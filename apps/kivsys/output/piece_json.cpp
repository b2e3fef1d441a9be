#include "apps/kivsys/output/piece_json.h"

#include "platform/console/native_system.h"

namespace kiv {
namespace {

using Json = nlohmann::ordered_json;

template <typename Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

std::size_t countIn(const Json& value) {
  return value.get_ref<const Json::number_unsigned_t&>();  // any other number may be one that a count cannot hold
}

std::optional<std::size_t> countOrNone(const Json& value) {
  return value.is_null() ? std::nullopt : std::optional(countIn(value));
}

std::optional<bool> verdictOrNone(const Json& value) {
  return value.is_null() ? std::nullopt : std::optional(value.get<bool>());
}

}  // namespace

Json toJson(const LibraryPiece& piece, const PieceFindings& findings) {
  return {{"folder", NativeSystem::toUtf8(piece.folder)},
          {"path", NativeSystem::toUtf8(piece.path)},
          {"prefix", NativeSystem::toUtf8(piece.prefix)},
          {"pages", findings.pages},
          {"systems", orNull(findings.systems)},
          {"instruments", orNull(findings.instruments)},
          {"consistent", orNull(findings.consistent)},
          {"multifile", orNull(findings.multifile)},
          {"problems", findings.problems}};
}

PieceFindings findingsIn(const Json& object) {
  PieceFindings findings;
  findings.pages = countIn(object.at("pages"));
  findings.systems = countOrNone(object.at("systems"));
  findings.instruments = countOrNone(object.at("instruments"));
  findings.consistent = verdictOrNone(object.at("consistent"));
  findings.multifile = verdictOrNone(object.at("multifile"));
  findings.problems = object.at("problems").get<std::vector<std::string>>();
  return findings;
}

std::string textOf(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace kiv
