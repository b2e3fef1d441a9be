#include "messages/conversion_messages.h"

#include "base/number.h"
#include "messages/new_message.h"

namespace kiv::messages {
namespace {

Message logicalError(std::string_view number, std::string_view procedure) {
  return critical(code::logicalError, "Logical error " + std::string(number) + " in " + std::string(procedure));
}

}  // namespace

Message noStaves(std::int16_t system) {
  Message message = critical(code::noStaves, "No staves encountered on this page. System = " + std::to_string(system));
  message.location.system = system;
  return message;
}

Message instrumentNotInOrder(std::int16_t instrument) {
  return critical(code::logicalError,
                  "Serious logic error - Instrument not in order table: " + std::to_string(instrument));
}

Message noPlaceForStaff(float number, float top) {
  return critical(code::logicalError,
                  "Logical error in insertStaff: " + generalNumber(number) + "/" + generalNumber(top));
}

Message noPlaceOnTop(float top) {
  return critical(code::logicalError, "Logical error in insertStaff: " + generalNumber(top));
}

Message noRestStaff(std::string_view procedure) {
  return logicalError("1", procedure);
}

Message noReferenceStaff(std::string_view procedure) {
  return logicalError("2", procedure);
}

Message noBeatInBar() {
  return logicalError("3", "setRestDurations");
}

Message noTimeSignature() {
  return logicalError("4", "setRestDurations");
}

Message oddTimeSignature(float upper, float lower) {
  return critical(code::timeSignature, "Time signature with up/dn=" + generalNumber(upper) + "/" +
                                           generalNumber(lower) +
                                           " cannot be handled by this program. Contact development.");
}

Message fileExists(const std::string& file) {
  return {code::fileExists,
          Icon::exclamation,
          Buttons::yesNo,
          "File exists: " + file + "\r\n\r\nOverwrite?",
          {},
          {},
          {file}};
}

Message stoppedByUser() {
  return critical(code::stoppedByUser, "Abnormal termination forced by user.");
}

Message created(int files, const std::string& first, const std::string& last) {
  return {code::created,
          Icon::information,
          Buttons::ok,
          "Created " + std::to_string(files) + " files.\r\nFirst is " + first + "\r\nLast is " + last,
          {},
          {},
          {first, last}};
}

Message sortProblem() {
  return critical(code::sortProblem, "Sort problem");
}

Message systemBarlineProblem() {
  return critical(code::systemBarline, "System barline problem.");
}

Message sortFinished() {
  return {code::sortFinished, Icon::information, Buttons::ok, "Sort finished", {}, {}};
}

}  // namespace kiv::messages
