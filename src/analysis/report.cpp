#include "analysis/report.h"

#include "analysis/zoned_line.h"
#include "base/number.h"

namespace kiv {
namespace {

constexpr std::size_t separatorLength = 87;
constexpr float leftBarline = 1;
constexpr std::string_view lineEnd = "\r\n";

std::string twoDigits(int number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string dateAndTime(const LocalTime& time) {
  return twoDigits(time.month) + "-" + twoDigits(time.day) + "-" + std::to_string(time.year) + "   " +
         twoDigits(time.hour) + ":" + twoDigits(time.minute) + ":" + twoDigits(time.second);
}

bool isLeftBarline(const ItemTable& table, int i) {
  return table.itemPar(i, par::type) == type::barline && table.itemPar(i, par::mark) == leftBarline;
}

bool isListed(const ItemTable& table, int i) {
  const float type = table.itemPar(i, par::type);
  return type == type::staff || type == type::rest || isLeftBarline(table, i);
}

void fillListingLine(const ItemTable& table, int i, ZonedLine& zones) {
  const float type = table.itemPar(i, par::type);
  zones.restart();
  zones.number(static_cast<float>(i)).number(type).number(table.itemPar(i, par::staff));
  if (type == type::rest) {
    zones.number(table.itemPar(i, par::cuedInstrument));
  } else if (type == type::staff) {
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

Report::Report(Host& host) : host_(host), file_(host.openOutput(reportFile)) {
  if (!file_) {
    host_.fatal("Failed to create report file: " + reportFile);
  }
}

void Report::line(std::string_view text) {
  pending_.append(text).append(lineEnd);
}

void Report::separator() {
  line("* " + std::string(separatorLength, '='));
}

void Report::hand() {
  if (const auto failure = file_->write(pending_)) {
    host_.runTimeError(*failure, reportFile);
  }
  pending_.clear();
}

void Report::writeHead(std::string_view versionText, const PageTable& pages) {
  line("* KivSystem - " + std::string(versionText) + "   " + dateAndTime(host_.now()));
  for (const PageEntry& page : pages.pages) {
    line(ZonedLine(host_, "* ").field(page.pageName).field(page.pageLetters).field(page.pagePath).text());
  }
  separator();
  hand();
}

void Report::writePage(const ItemTable& table) {
  line(ZonedLine(host_, "* ")
           .field("Nr")
           .field("Par1")
           .field("Staff")
           .field("Cue/Id")
           .field("System")
           .field("Staves")
           .field("Bottom")
           .field("Filename")
           .text());
  listing(table);
  separator();
  records(table);
  separator();
  hand();
}

void Report::listing(const ItemTable& table) {
  ZonedLine zones(host_, "* ");
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (isListed(table, i)) {
      fillListingLine(table, i, zones);
      line(zones.text());
    }
  }
}

void Report::records(const ItemTable& table) {
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, par::type) == type::staff) {
      appendStaffRecord(table, i, pending_);
    }
  }
}

std::optional<std::string_view> findElt(std::string_view rec, std::string_view par) {
  std::size_t at = rec.find(par);
  while (at != std::string_view::npos && !rec.substr(at + par.size()).starts_with('=')) {
    at = rec.find(par, at + 1);
  }
  if (at == std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view value = rec.substr(at + par.size() + 1);
  return value.substr(0, value.find(','));
}

std::string_view getElt(std::string_view rec, std::string_view par) {
  return findElt(rec, par).value_or("");
}

}  // namespace kiv
