#include "analysis/reported_systems.h"

#include <algorithm>

#include "analysis/report_record.h"
#include "messages/message.h"

namespace kiv {
namespace {

std::size_t hashOf(std::int16_t number) {
  return static_cast<std::uint16_t>(number);
}

}  // namespace

void Identifiers::add(std::string_view record) {
  const auto identifier = findElt(record, ReportRecord::instrument);
  if (identifier && !texts_.contains(*identifier)) {
    texts_.emplace(*identifier);
  }
}

SystemsReader::SystemsReader(SystemTable& table) : table_(table) {
  table = {};
}

/// The system with that number, which is added when it is new. Staves of one system mostly follow one another.
SystemTable::System& SystemsReader::system(std::int16_t number) {
  auto& systems = table_.systems;
  if (!systems.empty() && systems[latest_].systemNumber == number) {
    return systems[latest_];
  }
  latest_ = index_.findOrAdd(
      hashOf(number), [&](std::uint32_t s) { return systems[s].systemNumber == number; },
      [&](std::uint32_t s) { return hashOf(systems[s].systemNumber); }, [&] { systems.push_back({number}); });
  return systems[latest_];
}

void SystemsReader::add(std::string_view record) {
  const ReportRecord fields(record);
  const std::int16_t number = fields.strictWhole(ReportRecord::system);
  const std::int16_t identifier = fields.strictWhole(ReportRecord::anyInstrument);
  SystemTable::System& of = system(number);
  of.systemInstrList = table_.lists.append(of.systemInstrList, identifier);
  identifiers_.add(record);
}

/// The first record that ends the program does so when the report is complete; those after it do not matter.
std::optional<std::string> ReportedSystems::write(std::string_view bytes) {
  pending_ += bytes;
  try {
    addLines(false);
  } catch (const ProgramEnd&) {
    programEnd_ = std::current_exception();
  }
  return std::nullopt;
}

void ReportedSystems::addLines(bool isEnd) {
  std::string_view text = programEnd_ ? std::string_view() : pending_;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of("\r\n");
    const bool isWhole = end != std::string_view::npos && (text[end] == '\n' || end + 1 < text.size());
    if (!isWhole && !isEnd) {
      break;  // the rest of the line, or of its end, may follow
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(line.size());
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
    if (!line.starts_with('*')) {
      reader_.add(line);
    }
  }
  pending_.erase(0, pending_.size() - text.size());
}

void ReportedSystems::finish() {
  if (programEnd_) {
    std::rethrow_exception(programEnd_);
  }
  addLines(true);
  reader_.finish();
}

}  // namespace kiv
