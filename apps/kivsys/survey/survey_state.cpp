#include "apps/kivsys/survey/survey_state.h"

#include <sstream>

#include "apps/kivsys/output/piece_json.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

using Json = nlohmann::ordered_json;

std::string utf8(const std::string& text) {
  return textOf(NativeSystem::toUtf8(text));  // as the file has it, bytes that are no text included
}

}  // namespace

void SurveyState::addLine(const std::string& line, std::string& goodLines) {
  try {
    const Json object = Json::parse(line);
    known_[object.at("key").get<std::string>()] = {object.at("stamp").get<std::string>(), findingsIn(object)};
    goodLines += line + "\n";
  } catch (const Json::exception&) {
    return;  // a run was stopped while it wrote it
  }
}

std::string SurveyState::open(NativeSystem& system, const std::string& file) {
  std::string goodLines;
  const std::string name = system.fullName(file);
  std::istringstream lines(readWhole(system, name).value_or(""));
  for (std::string line; std::getline(lines, line);) {
    addLine(line, goodLines);
  }
  if (kindOf(system.diskName(name)) != PathKind::device) {
    if (const auto failure = system.replaceFile(name, goodLines)) {
      return *failure;
    }
  }
  system_ = &system;
  name_ = name;
  file_.open(file, std::ios::binary | std::ios::app);
  return file_ ? "" : "it cannot be opened";
}

std::optional<PieceFindings> SurveyState::find(const LibraryPiece& piece) const {
  const auto known = known_.find(utf8(piece.key()));
  return known != known_.end() && known->second.stamp == utf8(piece.stamp) ? std::optional(known->second.findings)
                                                                           : std::nullopt;
}

bool SurveyState::keep(const LibraryPiece& piece, const PieceFindings& findings) {
  if (!file_.is_open()) {
    return true;
  }
  Json object = toJson(piece, findings);
  object["key"] = utf8(piece.key());
  object["stamp"] = utf8(piece.stamp);
  file_ << textOf(object) + "\n" << std::flush;
  return file_.good();
}

bool SurveyState::flush() {
  return system_ == nullptr || (system_->flushFile(name_) && !system_->flushFolders());
}

}  // namespace kiv
