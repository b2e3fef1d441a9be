#pragma once

#include <string>
#include <vector>

#include "messages/message.h"

namespace kiv::messages {

// What is wrong as music with the rest staves of a result. Only the console program shows these. Each is about the
// location given: a result, its system, and a bar of it if that is known. Lengths are in quarter notes.

/// The instruments of rest staves that share a fault, from the top down.
using RestStavesOf = std::vector<float>;

Message barRestLength(const RestStavesOf& staves, double rest, double music, const Location& bar);
Message barTwoRests(const RestStavesOf& staves, const Location& bar);
Message barWithoutRest(const RestStavesOf& staves, const Location& bar);
/// The bar is that from which on they differ.
Message keyDiffers(const RestStavesOf& staves, const Location& bar);
Message timeDiffers(const RestStavesOf& staves, const Location& bar);
/// The instruments play later only, and what their staves are like there was not known.
Message lateEntryUnknown(const RestStavesOf& staves, const Location& system);
/// The instruments have played before, with another clef at the end.
Message clefDiffers(const RestStavesOf& staves, const Location& system);
Message braceDisplaced(int braces, const Location& system);
/// The staves that play last unequally long. The rest staves take the length given.
Message stavesDisagree(double length, const Location& bar);
/// Notes or rests last longer than that and are not counted. Without a bar, they stand between bars.
Message durationTooLong(double longest, const Location& bar);
/// No staff of the system has a key signature at its begin, though one had accidentals in the system before.
Message keyNotShown(const Location& system);
/// The result cannot be read, so that it and those after it are not checked.
Message resultsNotChecked(const Location& result);
/// No system of the group has a time signature.
Message noTimeSignature(const Location& system);

}  // namespace kiv::messages
