#include "analysis/systems_of_report.h"

#include "analysis/report_record.h"
#include "base/number.h"
#include "messages/message.h"

namespace kiv {
namespace {

std::size_t hashOf(std::int16_t number) {
  return static_cast<std::uint16_t>(number);
}

struct SystemAndInstrument {
  std::int16_t system = 0;
  std::int16_t instrument = 0;
};

/// Consumes a field with this head and a number of few digits, before a comma; nullopt for any other.
std::optional<std::int16_t> consumeField(std::string_view head, std::string_view& text) {
  constexpr std::size_t fewDigits = 4;
  if (!text.starts_with(head)) {
    return std::nullopt;
  }
  std::size_t end = head.size();
  int number = 0;
  for (; end < text.size() && isDigit(text[end]); ++end) {
    number = 10 * number + (text[end] - '0');
    if (end == head.size() + fewDigits) {
      return std::nullopt;
    }
  }
  if (end == head.size() || end == text.size() || text[end] != ',') {
    return std::nullopt;
  }
  text.remove_prefix(end);
  return static_cast<std::int16_t>(number);
}

/// Nearly all records begin with these two fields.
SystemAndInstrument systemAndInstrument(std::string_view record) {
  std::string_view rest = record;
  if (const auto system = consumeField("SYSTEM=", rest)) {
    if (const auto instrument = consumeField(",INSTRID=", rest)) {
      return {*system, *instrument};
    }
  }
  const ReportRecord fields(record);
  const std::int16_t system = fields.strictWhole(ReportRecord::system);
  return {system, fields.strictWhole(ReportRecord::anyInstrument)};
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
  const auto [number, identifier] = systemAndInstrument(record);
  SystemTable::System& of = system(number);
  of.systemInstrList = table_.lists.append(of.systemInstrList, identifier);
  identifiers_.add(record);
}

/// The first record that ends the program does so when the report is complete; those after it do not matter.
void SystemsOfReport::addRecord(std::string_view record) {
  if (programEnd_) {
    return;
  }
  try {
    reader_.add(record);
    if (indexReader_) {
      indexReader_->add(record);
    }
  } catch (const ProgramEnd&) {
    programEnd_ = std::current_exception();
  }
}

void SystemsOfReport::finish() {
  addLastLine();
  if (programEnd_) {
    std::rethrow_exception(programEnd_);
  }
  reader_.finish();
}

}  // namespace kiv
