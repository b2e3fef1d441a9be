#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/page_lookup.h"
#include "messages/message.h"
#include "platform/files.h"

namespace kiv {

/// A message and one location that it is about. What is not certain is empty.
struct Problem {
  std::string_view code;
  Icon severity = Icon::none;
  std::size_t message = 0;          ///< the index of the message in the run, from 0
  std::optional<std::string> file;  ///< full name
  std::optional<std::int16_t> system;
  std::optional<int> bar;            ///< its number in the system, from 1
  std::optional<double> staff;       ///< its number in the file
  std::optional<double> instrument;  ///< that of the staff, or the one that the cue refers to
  std::optional<ItemPlace> place;    ///< the item in the file
  int repeats = 1;                   ///< how often the message counts this item

  bool operator==(const Problem&) const = default;
};

/// A problem for every message of a run and every location that it is about, in the order of the messages; a message
/// without a location has one problem. Reads the pages again that have messages.
std::vector<Problem> findProblems(Files& files, const std::vector<Message>& messages);

}  // namespace kiv
