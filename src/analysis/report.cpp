#include "analysis/report.h"

#include "analysis/zoned_line.h"
#include "base/number.h"
#include "messages/analysis_messages.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

constexpr std::size_t separatorLength = 87;
constexpr std::size_t longText = std::size_t{32} * 1024;
constexpr std::string_view lineEnd = "\r\n";

std::string twoDigits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string dateAndTime(const LocalTime& time) {
  return twoDigits(time.month) + "-" + twoDigits(time.day) + "-" + std::to_string(time.year) + "   " +
         twoDigits(time.hour) + ":" + twoDigits(time.minute) + ":" + twoDigits(time.second);
}

void fillListingLine(const ItemTable& table, int i, ZonedLine& zones) {
  const ItemType type = table.type(i);
  zones.clear();
  zones.number(static_cast<float>(i)).number(type.number()).number(table.itemPar(i, par::staff));
  if (type == ItemType::rest) {
    zones.number(table.itemPar(i, par::cuedInstrument));
  } else if (type == ItemType::staff) {
    zones.number(table.itemPar(i, par::instrument))
        .number(table.itemPar(i, par::system))
        .number(table.itemPar(i, par::stavesUp))
        .number(table.itemPar(i, par::mark))
        .field(table.itemText(i));
  } else {
    zones.number(table.itemPar(i, par::spannedStaves)).emptyField().emptyField().number(table.itemPar(i, par::mark));
  }
}

void appendStaffRecord(const ItemTable& table, int i, std::string& record) {
  const auto field = [&](std::string_view keyword, int p) {
    record.append(keyword);
    appendGeneralNumber(record, table.itemPar(i, p));
  };
  field("SYSTEM=", par::system);
  field(",INSTRID=", par::instrument);
  field(",NEWSTAFF=", par::staff);
  field(",STAVESUP=", par::stavesUp);
  record.append(",").append(table.itemText(i)).append(lineEnd);
}

}  // namespace

Report::Report(Files& files, Machine& machine)
    : machine_(machine), ownFile_(files.openOutput(reportFile)), file_(ownFile_.get()) {
  if (!ownFile_) {
    endProgram(messages::reportNotCreated(reportFile));
  }
}

void Report::line(std::string_view text) {
  pending_.append(text).append(lineEnd);
}

void Report::separator() {
  line("* " + std::string(separatorLength, '='));
}

void Report::flush() {
  if (const auto failure = file_->write(pending_)) {
    endProgram(messages::platformFailure(*failure, reportFile));
  }
  pending_.clear();
}

void Report::writeHead(std::string_view versionText, const PageTable& pages) {
  line("* KivSystem - " + std::string(versionText) + "   " + dateAndTime(machine_.now()));
  for (const PageEntry& page : pages.pages) {
    line(ZonedLine(machine_, "* ").field(page.pageName).field(page.pageLetters).field(page.pagePath).text());
    if (pending_.size() >= longText) {
      flush();
    }
  }
  separator();
  flush();
}

void Report::writePage(const ItemTable& table, const TableRows& rows) {
  line(ZonedLine(machine_, "* ")
           .field("Nr")
           .field("Par1")
           .field("Staff")
           .field("Cue/Id")
           .field("System")
           .field("Staves")
           .field("Bottom")
           .field("Filename")
           .text());
  listing(table, rows.listed);
  separator();
  records(table, rows.staves);
  separator();
  flush();
}

void Report::listing(const ItemTable& table, const std::vector<int>& rows) {
  ZonedLine zones(machine_, "* ");
  for (const int i : rows) {
    fillListingLine(table, i, zones);
    line(zones.text());
  }
}

void Report::records(const ItemTable& table, const std::vector<int>& staves) {
  for (const int i : staves) {
    appendStaffRecord(table, i, pending_);
  }
}

}  // namespace kiv
