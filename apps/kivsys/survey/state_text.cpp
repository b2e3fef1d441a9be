#include "apps/kivsys/survey/state_text.h"

#include <algorithm>

#include "apps/kivsys/output/json_value.h"
#include "apps/kivsys/output/piece_json.h"
#include "base/utf8_character.h"

namespace kiv {
namespace {

constexpr std::string_view headStart = R"({"kivsys_survey_state":1,)";
constexpr std::size_t longestLine = std::size_t{4} * 1024 * 1024;
constexpr std::size_t mostNumbers = 65536;  // what 16 bits can number
constexpr std::size_t digestDigits = 64;

/// Whether a line is no longer than one can be, and has no more brackets within each other than one needs. A line of
/// brackets alone takes a hundred times its size when it is read.
bool canBeRead(std::string_view line) {
  constexpr int mostLevels = 8;
  int level = 0;
  bool isText = false;
  for (std::size_t at = 0; at < line.size() && level <= mostLevels; ++at) {
    const char c = line[at];
    if (isText && c == '\\') {
      ++at;
    } else if (c == '"') {
      isText = !isText;
    } else if (!isText) {
      level += c == '[' || c == '{' ? 1 : (c == ']' || c == '}' ? -1 : 0);
    }
  }
  return line.size() <= longestLine && level <= mostLevels;
}

/// The line of the text that begins here, without its end; nullopt for one that has none.
std::optional<std::string_view> lineAt(std::string_view text, std::size_t start) {
  const std::size_t end = text.find('\n', start);
  return end == std::string_view::npos ? std::nullopt : std::optional(text.substr(start, end - start));
}

std::int64_t timeIn(const Json& value) {
  return value.is_number_unsigned() ? value.get<std::int64_t>() : value.get_ref<const Json::number_integer_t&>();
}

std::vector<PageStamp> stampsIn(const Json& files) {
  std::vector<PageStamp> stamps;
  for (const Json& file : files) {
    stamps.push_back({file.at("name").get<std::string>(), file.at("bytes").get_ref<const Json::number_unsigned_t&>(),
                      timeIn(file.at("changed"))});
  }
  return stamps;
}

bool isDigest(const std::string& text) {
  return text.size() == digestDigits && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

/// Whether an analysis can have found this: what it counts exists, and it either ended or says why not.
bool isPossible(const StateEntry& entry) {
  const PieceFindings& findings = entry.findings;
  const bool ended = findings.systems.has_value();
  if (findings.instruments.has_value() != ended || findings.consistent.has_value() != ended ||
      findings.multifile.has_value() != ended || (!ended && findings.problems.empty())) {
    return false;
  }
  return findings.pages > 0 && findings.pages <= entry.stamps.size() && findings.systems.value_or(0) <= mostNumbers &&
         findings.instruments.value_or(0) <= mostNumbers && (entry.digest.empty() || isDigest(entry.digest));
}

/// A map that can be one; else an empty one.
SmallMap mapIn(const Json& value) {
  const auto rows = value.get<std::vector<std::string>>();
  const bool isMap = rows.size() <= mostMapRows && std::all_of(rows.begin(), rows.end(), [&](const std::string& row) {
                       return row.size() <= mostMapColumns && row.size() == rows.front().size() &&
                              row.find_first_not_of("012") == std::string::npos;
                     });
  return isMap ? rows : SmallMap();
}

void addEntry(std::string_view line, std::map<std::string, StateEntry>& entries) {
  try {
    const Json object = Json::parse(line);
    StateEntry entry{stampsIn(object.at("files")),
                     object.contains("sha256") ? object.at("sha256").get<std::string>() : std::string(),
                     findingsIn(object)};
    entry.findings.files = entry.stamps.size();
    entry.findings.map = object.contains("map") ? mapIn(object.at("map")) : SmallMap();
    if (isPossible(entry)) {
      entries[object.at("key").get<std::string>()] = entry;
    }
  } catch (const Json::exception&) {
    return;  // a run was stopped while it wrote it, or somebody has changed it
  }
}

std::optional<std::vector<std::string>> rootsIn(std::string_view head) {
  try {
    return Json::parse(head).at("folders").get<std::vector<std::string>>();
  } catch (const Json::exception&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<StateText> readState(std::string_view text) {
  const auto head = lineAt(text, 0);
  const bool begins = head && head->starts_with(headStart) && canBeRead(*head);
  const auto roots = begins ? rootsIn(*head) : std::nullopt;
  if (!roots) {
    return std::nullopt;
  }
  StateText state;
  state.roots = *roots;
  state.usableBytes = head->size() + 1;
  while (const auto line = lineAt(text, state.usableBytes)) {
    state.usableBytes += line->size() + 1;
    if (canBeRead(*line)) {
      addEntry(*line, state.entries);
    }
  }
  return state;
}

std::string stateHead(const std::vector<std::string>& roots) {
  return asText({{"kivsys_survey_state", 1}, {"folders", roots}}) + "\n";
}

std::string stateLine(const LibraryPiece& piece, const PieceFindings& findings) {
  Json object = toJson(piece, findings);
  object["key"] = stateName(NativeSystem::toUtf8(piece.key()));
  Json files = Json::array();
  for (const PageStamp& stamp : piece.stamps) {
    files.push_back(
        {{"name", stateName(NativeSystem::toUtf8(stamp.name))}, {"bytes", stamp.bytes}, {"changed", stamp.changed}});
  }
  object["files"] = files;
  if (!findings.map.empty()) {
    object["map"] = findings.map;
  }
  if (!piece.digest.empty()) {
    object["sha256"] = piece.digest;
  }
  return asText(object) + "\n";
}

std::string stateName(std::string_view name) {
  constexpr std::string_view mark = "\xEF\xBF\xBD";  // what stands for a character that cannot be read
  constexpr unsigned bitsPerDigit = 4;
  constexpr std::uint32_t lowest = 0xF;
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  for (std::size_t at = 0; at < name.size();) {
    const Utf8Character character = utf8CharacterAt(name, at);
    if (!character.valid) {
      (text += mark) += {digits[character.code >> bitsPerDigit], digits[character.code & lowest]};
    } else {
      text += name.substr(at, character.bytes);
      text += name.substr(at, character.bytes) == mark ? "U" : "";
    }
    at += character.bytes;
  }
  return text;
}

}  // namespace kiv
