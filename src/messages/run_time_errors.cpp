#include "messages/run_time_errors.h"

#include <string>

namespace kiv::messages {
namespace {

Message runTimeError(std::string_view code, std::string_view what, std::string_view workedOn) {
  Message message{code, Icon::critical, Buttons::ok, "Run-time error: ", {}, {}};
  message.text.append(what).append("\r\n").append(workedOn);
  message.names = {std::string(workedOn)};
  return message;
}

std::string nameOf(const Location& item) {
  return item.item == 0 ? item.file : item.file + ", item " + std::to_string(item.item);
}

Message at(const Location& location, Message message) {
  message.location = location;
  return message;
}

}  // namespace

Message overflow(const Location& item) {
  return at(item, runTimeError(code::overflow, "Overflow", nameOf(item)));
}

Message subscriptOutOfRange(const Location& item) {
  return at(item, runTimeError(code::subscriptOutOfRange, "Subscript out of range", nameOf(item)));
}

Message overflowInRecord(std::string_view record, const Location& location) {
  return at(location, runTimeError(code::overflow, "Overflow", record));
}

Message typeMismatchInRecord(std::string_view record, const Location& location) {
  return at(location, runTimeError(code::typeMismatch, "Type mismatch", record));
}

Message overflowIn(std::string_view workedOn) {
  return runTimeError(code::overflow, "Overflow", workedOn);
}

Message divisionByZero(std::int16_t instrument) {
  return runTimeError(code::divisionByZero, "Division by zero", "instrument " + std::to_string(instrument));
}

Message invalidArgument(std::string_view workedOn) {
  return platformFailure("Invalid procedure call or argument", workedOn);
}

Message platformFailure(std::string_view platformText, std::string_view workedOn) {
  return runTimeError(code::runTimeError, platformText, workedOn);
}

Message readFailure(std::string_view file) {
  return platformFailure("Device I/O error", file);
}

Message fileChanged(const std::string& file) {
  return at({.file = file},
            {code::fileChanged, Icon::critical, Buttons::ok, "Changed by another program: " + file, {}, {}});
}

}  // namespace kiv::messages
