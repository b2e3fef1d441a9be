#include "messages/warnings.h"

#include <utility>

#include "base/number.h"

namespace kiv::messages {
namespace {

Message warning(std::string_view code, std::string text, const Location& location) {
  return {code, Icon::exclamation, Buttons::ok, std::move(text), location, {}};
}

std::string staffWords(int count) {
  return std::to_string(count) + (count == 1 ? " staff" : " staves");
}

std::string itemWords(int count) {
  return std::to_string(count) + (count == 1 ? " item is" : " items are");
}

}  // namespace

Message tooManyStaves(int staves, const Location& system) {
  return warning(code::tooManyStaves, "a result would have " + staffWords(staves) + ", and only 32 are written",
                 system);
}

Message severalZeroIds(int staves, const Location& staff) {
  return warning(code::severalZeroIds,
                 staffWords(staves) +
                     " of the system have no instrument id, so a conversion cannot tell them "
                     "apart",
                 staff);
}

Message repeatedInstrumentId(const Location& staff) {
  return warning(code::repeatedInstrumentId,
                 "the instrument id occurs again in the system; a conversion may mix the staves up", staff);
}

Message repeatedStaffNumber(const Location& staff) {
  return warning(code::repeatedStaffNumber,
                 "the staff number occurs again in the system; a conversion takes the items of both staves for each",
                 staff);
}

Message negativeInstrumentId(float instrument, const Location& staff) {
  return warning(code::negativeInstrumentId,
                 "instrument id " + generalNumber(instrument) + " counts as " + generalNumber(-instrument), staff);
}

Message nameWithComma(const std::string& file) {
  return warning(code::nameWithComma, "the name has a comma, and the records of the report end it there",
                 {.file = file});
}

Message hiddenBottomStaff(int staves, const Location& staff) {
  return warning(
      code::hiddenBottomStaff,
      "the staff is hidden, so its barline does not join the " + staffWords(staves) + " above it to a system", staff);
}

Message itemsOnNoStaff(int items, float staff, const Location& item) {
  return warning(code::itemOnNoStaff,
                 itemWords(items) + " on staff " + generalNumber(staff) +
                     ", which has no staff item; a conversion leaves out what is there",
                 item);
}

Message itemsOnHiddenStaff(int items, float number, const Location& staff) {
  return warning(code::itemOnNoStaff,
                 itemWords(items) + " on staff " + generalNumber(number) +
                     ", which is hidden; a conversion leaves out what is there",
                 staff);
}

Message repeatedIdInSort(const Location& staff) {
  return warning(code::repeatedInstrumentId,
                 "the instrument id occurs again on the page; a sort mixes the items of the staves up", staff);
}

Message severalZeroIdsInSort(int staves, const Location& staff) {
  return warning(code::severalZeroIds,
                 staffWords(staves) + " of the page have no instrument id; a sort mixes their items up", staff);
}

Message repeatedStaffNumberInSort(const Location& staff) {
  return warning(code::repeatedStaffNumber,
                 "the staff number occurs again on the page; a sort takes the staves for one", staff);
}

Message shortTextCut(const Location& text) {
  return warning(code::shortTextCut, "the text is cut to 5 characters", text);
}

Message textFilled(const Location& text) {
  return warning(code::textFilled, "the text is filled up with blanks to 24 characters", text);
}

Message staffP4Cleared(int staves, const Location& staff) {
  return warning(code::staffP4Cleared, "P4 of " + staffWords(staves) + " is not 0, and is written as 0", staff);
}

}  // namespace kiv::messages
