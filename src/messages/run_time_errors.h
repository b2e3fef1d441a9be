#pragma once

#include <string>
#include <string_view>

#include "messages/message.h"

namespace kiv::messages {

// Run-time errors: critical messages that name what was being worked on.

/// An item is named by its file and its number there; without a number, by the file alone.
Message overflow(const Location& item);
Message subscriptOutOfRange(const Location& item);
/// The same for a record of the report: the text names the record, the location what it lists.
Message overflowInRecord(std::string_view record, const Location& location);
Message typeMismatchInRecord(std::string_view record, const Location& location);
/// The same for what is no item and no record: the name of a procedure or of a file.
Message overflowIn(std::string_view workedOn);
Message divisionByZero(std::int16_t instrument);
/// A text from which more characters were to be cut than it has.
Message invalidArgument(std::string_view workedOn);
/// A failure that the platform has words for.
Message platformFailure(std::string_view platformText, std::string_view workedOn);
/// A file that cannot be read to its end.
Message readFailure(std::string_view file);

/// A file of the run that another program has changed while the run was at work. Only the console program says so.
Message fileChanged(const std::string& file);

}  // namespace kiv::messages
