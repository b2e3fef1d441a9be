#include "messages/music_warnings.h"

#include <cstddef>
#include <utility>

#include "base/number.h"

namespace kiv::messages {
namespace {

Message musicWarning(std::string_view code, std::string text, const Location& location) {
  return {code, Icon::exclamation, Buttons::ok, std::move(text), location, {}};
}

/// "rest staff 102", "rest staves 102, 103"; many are counted.
std::string nameOf(const RestStavesOf& staves) {
  constexpr std::size_t mostNamed = 8;
  if (staves.size() > mostNamed) {
    return std::to_string(staves.size()) + " rest staves";
  }
  std::string text = staves.size() == 1 ? "rest staff" : "rest staves";
  for (std::size_t i = 0; i < staves.size(); ++i) {
    text += (i == 0 ? " " : ", ") + generalNumber(staves[i]);
  }
  return text;
}

std::string quarters(double length) {
  return generalNumber(static_cast<float>(length)) + (length == 1 ? " quarter" : " quarters");
}

}  // namespace

Message barRestLength(const RestStavesOf& staves, double rest, double music, const Location& bar) {
  return musicWarning(
      code::barRestLength,
      nameOf(staves) + ": the rest lasts " + quarters(rest) + ", the music of the bar " + quarters(music), bar);
}

Message barTwoRests(const RestStavesOf& staves, const Location& bar) {
  return musicWarning(code::barTwoRests, nameOf(staves) + ": two rests fill the same time of the bar", bar);
}

Message barWithoutRest(const RestStavesOf& staves, const Location& bar) {
  return musicWarning(code::barWithoutRest, nameOf(staves) + ": the bar has no rest", bar);
}

Message keyDiffers(const RestStavesOf& staves, const Location& bar) {
  return musicWarning(code::keyOrTimeDiffers, nameOf(staves) + ": the key is not that of the system", bar);
}

Message timeDiffers(const RestStavesOf& staves, const Location& bar) {
  return musicWarning(code::keyOrTimeDiffers, nameOf(staves) + ": the time is not that of the system", bar);
}

Message lateEntryUnknown(const RestStavesOf& staves, const Location& system) {
  return musicWarning(code::lateEntryUnknown,
                      nameOf(staves) + ": size, lines or clef are not those with which the instrument enters later",
                      system);
}

Message clefDiffers(const RestStavesOf& staves, const Location& system) {
  return musicWarning(code::clefDiffers, nameOf(staves) + ": the clef is not the last one that the instrument had",
                      system);
}

Message braceDisplaced(int braces, const Location& system) {
  return musicWarning(code::braceDisplaced,
                      std::to_string(braces) + (braces == 1 ? " brace stands" : " braces stand") +
                          " away from the left edge of the system",
                      system);
}

Message stavesDisagree(double length, const Location& bar) {
  return musicWarning(code::stavesDisagree,
                      "the staves that play last unequally long; rest staves should last " + quarters(length), bar);
}

Message durationTooLong(double longest, const Location& bar) {
  return musicWarning(code::durationTooLong,
                      "a note or rest lasts more than " + quarters(longest) + ", so it is not counted", bar);
}

Message keyNotShown(const Location& system) {
  return musicWarning(code::keyNotShown,
                      "no staff shows a key, though one did before; rest staves may keep a key that has changed",
                      system);
}

Message resultsNotChecked(const Location& result) {
  return musicWarning(code::resultsNotChecked,
                      "the result cannot be read; the rest staves in it and in those after it are not checked", result);
}

Message noTimeSignature(const Location& system) {
  return musicWarning(code::noTimeSignature, "no page has a time signature; rest staves should have bars of 4/4",
                      system);
}

}  // namespace kiv::messages
