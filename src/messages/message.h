#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "messages/codes.h"

namespace kiv {

/// The symbol in a message box. Critical messages end the program; the others only inform or ask.
enum class Icon { none, information, exclamation, critical };
enum class Buttons { ok, yesNo };
enum class Answer { ok, yes, no };

/// What a message is about, as far as that is known.
struct Location {
  std::string file;  ///< full name; "" when it is about no file
  int item = 0;      ///< the number of the item in its file, from 1; 0 for the file as a whole
  std::optional<double> staff = std::nullopt;         ///< the number of the staff in its file
  std::optional<double> instrument = std::nullopt;    ///< the identifier of the staff, or of what a cue refers to
  std::optional<std::int16_t> system = std::nullopt;  ///< its number in the group, from 1
  int repeats = 1;                                    ///< how often the message counts this place
  std::optional<int> bar = std::nullopt;              ///< its number in the system, from 1

  bool operator==(const Location&) const = default;
};

/// One message of the system. Its text is what the user sees, lines ended by CR LF; everything else is the same fact
/// as data.
struct Message {
  std::string_view code = code::other;
  Icon icon = Icon::information;
  Buttons buttons = Buttons::ok;
  std::string text;
  Location location;
  std::vector<Location> places;  ///< of a message that counts several things: each of them
  /// Names in the text that come from outside and are not among the locations. A line end in them is none of the text.
  std::vector<std::string> names = {};

  bool operator==(const Message&) const = default;
};

/// The same message with the symbol of a critical one.
Message asCritical(Message message);

/// The end of the program, thrown where a procedure ends it. Only the programs' mains and those who run a procedure on
/// its own catch it; they show the message.
struct ProgramEnd {
  int exitCode = 0;                               ///< 0 after a normal end, 1 after a critical message
  std::optional<Message> message = std::nullopt;  ///< the critical message that is still to be shown

  /// Whether this is the end of the whole run, as a signal asks for it: no procedure has ended it over a message, so
  /// those who run a procedure on its own pass it on.
  bool endsWholeRun() const { return exitCode != 0 && !message; }
};

/// Ends the program over a critical message.
[[noreturn]] void endProgram(Message critical);

}  // namespace kiv
