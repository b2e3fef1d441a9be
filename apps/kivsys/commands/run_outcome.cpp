#include "apps/kivsys/commands/run_outcome.h"

#include <iostream>

#include <nlohmann/json.hpp>

#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/output/verification_json.h"

namespace kiv {
namespace {

const char* nameOf(Answer answer) {
  switch (answer) {
    case Answer::yes:
      return "yes";
    case Answer::no:
      return "no";
    case Answer::ok:
      break;
  }
  return "ok";
}

template <typename Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

std::string yesOrNo(bool value) {
  return value ? "YES" : "NO";
}

}  // namespace

const char* nameOf(Icon icon) {
  switch (icon) {
    case Icon::information:
      return "information";
    case Icon::exclamation:
      return "exclamation";
    case Icon::critical:
      return "critical";
    case Icon::none:
      break;
  }
  return "none";
}

RunOutcome outcomeOf(const KivSystem& program, const ConsoleHost& host, bool normalEnd) {
  RunOutcome outcome;
  outcome.normalEnd = normalEnd;
  if (normalEnd) {
    outcome.instruments = program.systems.instrumentCount;
    outcome.consistency = program.systems.isConsistent();
    outcome.multifile = program.pages.multifileCount != 0;
    outcome.systems = program.systems.systemCount();
  }
  outcome.messages = host.messages();
  outcome.files = program.names.nameCount;
  return outcome;
}

RunOutcome withPagesWritten(RunOutcome analysis, const ConsoleHost& host, bool normalEnd) {
  analysis.normalEnd = normalEnd;
  analysis.messages = host.messages();
  analysis.created = host.replacedFiles();
  return analysis;
}

RunOutcome writingOutcomeOf(const NamesTable& names, const ConsoleHost& host, bool normalEnd) {
  RunOutcome outcome;
  outcome.files = names.nameCount;
  return withPagesWritten(outcome, host, normalEnd);
}

Json jsonOf(const RunOutcome& outcome) {
  Json messages = Json::array();
  for (const ShownMessage& message : outcome.messages) {
    messages.push_back({{"icon", nameOf(message.icon)},
                        {"text", NativeSystem::toUtf8(message.text)},
                        {"answer", nameOf(message.answer)}});
  }
  Json object = {{"end", outcome.normalEnd ? "normal" : "critical"},
                 {"messages", messages},
                 {"consistency", orNull(outcome.consistency)},
                 {"multifile", orNull(outcome.multifile)},
                 {"files", outcome.files},
                 {"systems", orNull(outcome.systems)},
                 {"instruments", orNull(outcome.instruments)}};
  if (outcome.created) {
    Json created = Json::array();
    for (const std::string& file : *outcome.created) {
      created.push_back(NativeSystem::toUtf8(file));
    }
    object["created"] = created;
  }
  if (outcome.verifies) {
    object["verified"] = outcome.verification ? toJson(*outcome.verification) : Json();
  }
  return object;
}

std::string asLine(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string asJson(const RunOutcome& outcome) {
  Json object = jsonOf(outcome);
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

std::string asText(const RunOutcome& outcome) {
  if (!outcome.consistency) {
    return "";
  }
  return "CONSISTENCY=" + yesOrNo(outcome.consistency.value_or(false)) +
         "\nMULTIFILE=" + yesOrNo(outcome.multifile.value_or(false)) + "\nFiles: " + std::to_string(outcome.files) +
         "\nSystems: " + std::to_string(outcome.systems.value_or(0)) +
         "\nInstruments: " + std::to_string(outcome.instruments.value_or(0)) + "\n";
}

std::string createdLines(const RunOutcome& outcome) {
  std::string lines;
  for (const std::string& file : outcome.created.value_or(std::vector<std::string>())) {
    lines += file + "\n";
  }
  return lines;
}

int printOutcome(const std::string& text, int status) {
  std::cout << text << std::flush;
  if (std::cout) {
    return status;
  }
  std::cerr << "kivsys: cannot write to standard output\n";
  return exit_status::critical;
}

}  // namespace kiv
