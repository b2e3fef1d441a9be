#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "messages/message.h"

namespace kiv {

/// The value of a keyword field as getElt gives it; nullopt when the keyword is not there.
std::optional<std::string_view> findElt(std::string_view rec, std::string_view par);

/// The value of a keyword field of a record: the text between the first par + "=" and the next comma, or the end.
/// "" when the keyword is not there. A keyword may be the end of a longer one, so records are searched for ",STAFF".
std::string_view getElt(std::string_view rec, std::string_view par);

/// A record of the report: one staff of one system. It refers to the line, which must outlive it.
class ReportRecord {
 public:
  // The keywords of the fields.
  static constexpr std::string_view system = "SYSTEM";
  static constexpr std::string_view instrument = ",INSTRID";
  static constexpr std::string_view newStaff = ",NEWSTAFF";  ///< the staff's number in the page
  static constexpr std::string_view stavesUp = ",STAVESUP";
  static constexpr std::string_view staff = ",STAFF";  ///< its number in the file
  /// The instrument of a record that need not begin with its system.
  static constexpr std::string_view anyInstrument = "INSTRID";

  explicit ReportRecord(std::string_view line) : line_(line) {}

  std::string_view line() const { return line_; }
  bool namesSystem() const { return line_.find("SYSTEM=") != std::string_view::npos; }
  /// The text of a field; "" when it is not there.
  std::string_view text(std::string_view keyword) const { return getElt(line_, keyword); }

  /// The page file, up to the next comma, as a conversion reads it.
  std::string_view file() const { return getElt(line_, ",FILE"); }
  /// The page file with any comma of its name: the field is the last one.
  std::string_view fileToEnd() const;

  /// The number that the field's text begins with, rounded to 16 bits; 0 when there is none. One that does not fit ends
  /// the program.
  std::int16_t leadingWhole(std::string_view keyword) const;
  /// The number that the field's text is as a whole, rounded to 16 bits; 0 when the field is not there. Another text
  /// ends the program, as does a number that does not fit.
  std::int16_t strictWhole(std::string_view keyword) const;
  /// The same, but nullopt where there is no such number.
  std::optional<std::int16_t> wholeOrNone(std::string_view keyword) const;

  /// The staff that the record lists.
  Location location() const;

 private:
  std::string_view line_;
};

}  // namespace kiv
