#include "apps/kivsys/undo/journal_text.h"

#include <algorithm>
#include <map>
#include <utility>

#include <nlohmann/json.hpp>

#include "base/utf8_character.h"
#include "platform/console/native_system.h"
#include "platform/kept_file.h"

namespace kiv {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t longestLine = std::size_t{64} * 1024;
constexpr std::size_t digestDigits = 64;
constexpr std::size_t runDigits = 16;
constexpr const char* hexMark = "hex:";

bool isHex(std::string_view text) {
  return text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool isDigest(std::string_view text) {
  return text.size() == digestDigits && isHex(text);
}

bool isUtf8(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    if (!character.valid) {
      return false;
    }
    at += character.bytes;
  }
  return true;
}

/// A name in UTF-8; bytes that are no text in digits.
std::string encoded(const std::string& name) {
  constexpr std::string_view digits = "0123456789abcdef";
  constexpr unsigned bitsPerDigit = 4;
  constexpr unsigned lowest = 0xF;
  std::string utf8 = NativeSystem::toUtf8(name);
  if (isUtf8(utf8) && !utf8.starts_with(hexMark)) {
    return utf8;
  }
  std::string text = hexMark;
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    text += {digits[byte >> bitsPerDigit], digits[byte & lowest]};
  }
  return text;
}

std::optional<std::string> decoded(std::string_view text) {
  constexpr int base = 16;
  if (!text.starts_with(hexMark)) {
    return NativeSystem::fromUtf8(text);
  }
  text.remove_prefix(std::string_view(hexMark).size());
  if (!isHex(text) || text.size() % 2 != 0) {
    return std::nullopt;
  }
  std::string name;
  for (std::size_t at = 0; at < text.size(); at += 2) {
    name += static_cast<char>(std::stoi(std::string(text.substr(at, 2)), nullptr, base));
  }
  return NativeSystem::fromUtf8(name);
}

/// A text of JSON. The JSON library does not survive a lack of memory, which must not end a run between two files.
std::string quoted(const std::string& utf8) {
  constexpr std::string_view digits = "0123456789abcdef";
  constexpr unsigned bitsPerDigit = 4;
  constexpr unsigned lowest = 0xF;
  std::string text = "\"";
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < ' ') {
      text += "\\u00";
      text += {digits[byte >> bitsPerDigit], digits[byte & lowest]};
    } else {
      text += c == '"' || c == '\\' ? "\\" : "";
      text += c;
    }
  }
  return text + "\"";
}

/// A line with these keys and texts; those that are "" are left out.
std::string lineOf(const std::vector<std::pair<std::string, std::string>>& values) {
  std::string line;
  for (const auto& [key, value] : values) {
    if (!value.empty()) {
      line += (line.empty() ? "{" : ",") + quoted(key) + ":" + quoted(value);
    }
  }
  return line + "}\n";
}

bool isState(const std::string& text) {
  return isDigest(text) || text == file_state::missing || text.starts_with(file_state::linkStart);
}

/// A state with a link's target, which is a name.
std::string encodedState(const std::string& state) {
  const std::string start = file_state::linkStart;
  return state.starts_with(start) ? start + encoded(state.substr(start.size())) : state;
}

std::optional<std::string> decodedState(const std::string& text) {
  const std::string start = file_state::linkStart;
  if (!text.starts_with(start)) {
    return text;
  }
  const auto target = decoded(text.substr(start.size()));
  return target ? std::optional(start + *target) : std::nullopt;
}

/// Reads one journal, line by line.
class Reader {
 public:
  bool addHead(const Json& line);
  bool addLine(const Json& line);
  Journal journal() && { return std::move(journal_); }

 private:
  bool addFolder(const Json& line);
  bool addChange(const Json& line, const std::string& path);
  bool addFirstChange(const Json& line, const std::string& path);
  bool isKeptName(const std::string& name) const;
  bool isInFolder(const std::string& path) const;

  Journal journal_;
  std::map<std::string, std::size_t> files_;  // the index in the journal, by path
};

std::string textAt(const Json& line, const char* key) {
  return line.contains(key) ? line.at(key).get<std::string>() : std::string();
}

bool Reader::addHead(const Json& line) {
  journal_.id = textAt(line, "id");
  journal_.command = textAt(line, "command");
  journal_.time = textAt(line, "time");
  return textAt(line, "kivsys_undo") == "1" && isRunId(journal_.id);
}

bool Reader::addFolder(const Json& line) {
  const auto path = decoded(textAt(line, "folder"));
  const std::string previous = textAt(line, "previous");
  if (!path || !isRealPath(*path) || !(previous.empty() || isRunId(previous))) {
    return false;
  }
  journal_.folders.push_back({*path, previous});
  return true;
}

bool Reader::isInFolder(const std::string& path) const {
  return std::any_of(journal_.folders.begin(), journal_.folders.end(),
                     [&](const JournalFolder& known) { return known.path == folderAbove(path); });
}

bool Reader::isKeptName(const std::string& name) const {
  constexpr std::size_t mostDigits = 9;
  const std::string start = journal_.id + "-";
  const std::string number = name.starts_with(start) ? name.substr(start.size()) : "";
  return !number.empty() && number.size() <= mostDigits && number.find_first_not_of("0123456789") == std::string::npos;
}

bool Reader::addFirstChange(const Json& line, const std::string& path) {
  const auto before = decodedState(textAt(line, "before"));
  const std::string kept = textAt(line, "kept");
  const bool isNew = before && *before == file_state::missing;
  if (!before || !isState(*before) || isNew != kept.empty() || !(isNew || isKeptName(kept))) {
    return false;
  }
  files_.emplace(path, journal_.files.size());
  journal_.files.push_back({path, *before, kept, {*before}});
  return true;
}

bool Reader::addChange(const Json& line, const std::string& path) {
  if (!isRealPath(path) || !isInFolder(path)) {
    return false;
  }
  if (!files_.contains(path) && !addFirstChange(line, path)) {
    return false;
  }
  FileChange& change = journal_.files[files_.at(path)];
  if (const std::string state = textAt(line, "after"); !state.empty()) {
    change.states.push_back(state);
    return isState(state) || state == file_state::anything;
  }
  const std::string written = textAt(line, "written");
  std::erase(change.states, file_state::anything);
  change.states.push_back(written);
  return isDigest(written);
}

bool Reader::addLine(const Json& line) {
  if (line.contains("folder")) {
    return addFolder(line);
  }
  if (line.contains("made")) {
    const auto made = decoded(textAt(line, "made"));
    journal_.madeFolders.push_back(made.value_or(""));
    return made && isRealPath(*made);
  }
  const auto path = decoded(textAt(line, "file"));
  return path && addChange(line, *path);
}

/// Whether a line is no longer than one can be, and has no brackets within others. A line of brackets alone takes a
/// hundred times its size when it is read.
bool isFlat(std::string_view line) {
  std::size_t brackets = 0;
  bool isText = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    const char c = line[at];
    if (isText && c == '\\') {
      ++at;
    } else if (c == '"') {
      isText = !isText;
    } else if (!isText && (c == '[' || c == '{')) {
      ++brackets;
    }
  }
  return line.size() <= longestLine && brackets == 1;
}

}  // namespace

std::optional<Journal> readJournal(std::string_view text) {
  Reader reader;
  bool isHead = true;
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    const std::string_view line = text.substr(0, end);
    const Json object = isFlat(line) ? Json::parse(line, nullptr, false) : Json();
    try {
      if (!object.is_object() || !(isHead ? reader.addHead(object) : reader.addLine(object))) {
        return std::nullopt;
      }
    } catch (const Json::exception&) {
      return std::nullopt;  // a value of another kind
    }
    isHead = false;
    text.remove_prefix(end + 1);
  }
  return isHead ? std::nullopt : std::optional(std::move(reader).journal());
}

std::string journalHead(const Journal& journal) {
  return lineOf({{"kivsys_undo", "1"}, {"id", journal.id}, {"command", journal.command}, {"time", journal.time}});
}

std::string folderLine(const JournalFolder& folder) {
  return lineOf({{"folder", encoded(folder.path)}, {"previous", folder.previous}});
}

std::string madeFolderLine(const std::string& path) {
  return lineOf({{"made", encoded(path)}});
}

std::string firstChangeLine(const FileChange& change) {
  return lineOf({{"file", encoded(change.path)},
                 {"before", encodedState(change.before)},
                 {"kept", change.kept},
                 {"after", change.states.back()}});
}

std::string laterChangeLine(const std::string& path, const std::string& state) {
  return lineOf({{"file", encoded(path)}, {"after", state}});
}

std::string writtenLine(const std::string& path, const std::string& digest) {
  return lineOf({{"file", encoded(path)}, {"written", digest}});
}

bool isRunId(std::string_view text) {
  return text.size() == runDigits && isHex(text);
}

std::string keptName(const std::string& run, std::size_t n) {
  return run + "-" + std::to_string(n);
}

}  // namespace kiv
