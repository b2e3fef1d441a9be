#pragma once

#include <string>

#include "messages/message.h"

namespace kiv::messages {

// What a run loses or changes without a message of the panel. Only the console program shows these. Each is about the
// location given.

/// A conversion writes 32 staves of a result, and it would have more.
Message tooManyStaves(int staves, const Location& system);
/// Staves of a system that no instrument identifier distinguishes.
Message severalZeroIds(int staves, const Location& staff);
/// A conversion orders staves by instrument, and these are of the same one.
Message repeatedInstrumentId(const Location& staff);
/// A conversion takes items by the number of their staff, and these staves have the same one.
Message repeatedStaffNumber(const Location& staff);
Message negativeInstrumentId(float instrument, const Location& staff);
/// The records of the report end a name at its first comma.
Message nameWithComma(const std::string& file);
/// A hidden staff whose barline holds the staves above it together. An analysis sees neither.
Message hiddenBottomStaff(int staves, const Location& staff);
/// Items whose staff has no staff item. The location is that of the first one.
Message itemsOnNoStaff(int items, float staff, const Location& item);
/// Items whose staff is hidden, beside staff items and barlines. The location is that of the staff.
Message itemsOnHiddenStaff(int items, float number, const Location& staff);
/// A sort orders items by the instrument of their staff, and these staves have the same one.
Message repeatedIdInSort(const Location& staff);
/// The same, of staves without an instrument identifier. The location is that of the first one.
Message severalZeroIdsInSort(int staves, const Location& staff);
/// A sort takes items by the number of their staff, and these staves have the same one.
Message repeatedStaffNumberInSort(const Location& staff);
Message shortTextCut(const Location& text);
Message textFilled(const Location& text);
/// The location is that of the first of the staves.
Message staffP4Cleared(int staves, const Location& staff);

}  // namespace kiv::messages
