#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "messages/message.h"

namespace kiv::messages {

// What a conversion or a sort says. All that is not marked is critical.

Message noStaves(std::int16_t system);
Message instrumentNotInOrder(std::int16_t instrument);
/// There is no position for the staff of a missing instrument: the number it was to get, and the highest staff.
Message noPlaceForStaff(float number, float top);
Message noPlaceOnTop(float top);
/// The instrument has no staff, or there is no other staff; procedure is the one that missed it.
Message noRestStaff(std::string_view procedure);
Message noReferenceStaff(std::string_view procedure);
Message noBeatInBar();
Message noTimeSignature();
Message oddTimeSignature(float upper, float lower);

/// Asks before a file is overwritten.
Message fileExists(const std::string& file);
Message stoppedByUser();
/// Information: the files that a conversion has written.
Message created(int files, const std::string& first, const std::string& last);

Message sortProblem();
Message systemBarlineProblem();
/// Information.
Message sortFinished();

}  // namespace kiv::messages
