#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "messages/message.h"
#include "mus/item.h"
#include "platform/files.h"

namespace kiv {

/// A result of a conversion, to be checked as music.
struct CheckedResult {
  std::string file;                ///< full name
  std::set<std::int16_t> playing;  ///< the instruments that its system had
};

/// Where on a page a fault is.
struct FaultPlace {
  float staff = 0;                                  ///< its number
  std::optional<std::pair<float, float>> bar = {};  ///< from where to where; of a brace twice its position
};

/// Something that is wrong with results of a conversion as music.
struct MusicFault {
  Message warning;
  std::size_t result = 0;  ///< an index
  std::vector<FaultPlace> places;
};

/// Whether it is wanted where on the pages faults are.
enum class FaultPlaces : bool { no, yes };

/// Looks in the results of one conversion, which must be all of them in the order of the systems, for rest staves that
/// do not fit the music, and for braces out of their position. Knows nothing of how they were made. A result that
/// cannot be read ends the search, which the first fault says. Writes and shows nothing.
std::vector<MusicFault> findMusicFaults(Files& files, const std::vector<CheckedResult>& results, FaultPlaces places);

/// What is wrong at one place of a page.
struct PageFault {
  FaultPlace place;
  std::string words;  ///< short, with lengths in quarter notes: "rest 3, music 2"
};

/// What one system shows by itself, without the rest of its group: rests that do not fit the music of their bar, and
/// braces out of their position. Without a rest staff there is nothing.
std::vector<PageFault> findPageFaults(const std::vector<Item>& system, const std::set<float>& restStaves);

}  // namespace kiv
