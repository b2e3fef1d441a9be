#include "tests/reference/report_staves.h"

#include <functional>
#include <string_view>

#include "analysis/report.h"
#include "base/number.h"
#include "messages/analysis_messages.h"
#include "messages/run_time_errors.h"
#include "platform/text_records.h"
#include "tests/reference/order_table.h"

namespace kiv::reference {
namespace {

/// The value of a keyword of a record; "" without the keyword.
std::string getElt(std::string_view rec, std::string_view par) {
  const std::string keyword = std::string(par) + "=";
  const std::size_t at = rec.find(keyword);
  if (at == std::string_view::npos) {
    return "";
  }
  const std::string_view rest = rec.substr(at + keyword.size());
  return std::string(rest.substr(0, rest.find(',')));
}

/// The number that the value begins with, as a 16-bit integer; one that does not fit ends the program.
std::int16_t wholeElt(std::string_view rec, std::string_view par) {
  const auto number = toInt16(numericValue(getElt(rec, par)));
  if (!number) {
    endProgram(messages::overflowInRecord(rec, {}));
  }
  return *number;
}

void forEachStaff(Files& files, const std::function<void(std::string_view record)>& visit) {
  forEachRecord(openLines(files, reportFile, messages::reportNotReadForConversion()), reportFile,
                [&](std::string_view line) {
                  if (line.find("SYSTEM=") != std::string_view::npos) {
                    visit(line);
                  }
                });
}

void addStaff(StaffList& list, std::string_view record) {
  ++list.count;
  list.instrId.growTo(list.count);
  list.stavesUp.growTo(list.count);
  list.staff.growTo(list.count);
  list.file.growTo(list.count);
  list.newStaff.growTo(list.count);
  list.instrId[list.count] = wholeElt(record, ",INSTRID");
  list.stavesUp[list.count] = wholeElt(record, ",STAVESUP");
  list.staff[list.count] = wholeElt(record, ",STAFF");
  list.file[list.count] = getElt(record, ",FILE");
  list.newStaff[list.count] = wholeElt(record, ",NEWSTAFF");
}

}  // namespace

void setInstrumentOrder(Files& files, OrderTable& order) {
  order.count = 0;
  forEachStaff(files, [&](std::string_view record) { addInstrument(order, wholeElt(record, "INSTRID")); });
}

StaffList stavesOfSystem(Files& files, int system) {
  StaffList list;
  forEachStaff(files, [&](std::string_view record) {
    if (numericValue(getElt(record, "SYSTEM")) == system) {
      addStaff(list, record);
    }
  });
  return list;
}

}  // namespace kiv::reference
