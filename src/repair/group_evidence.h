#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/group_facts.h"
#include "diagnostics/page_staves.h"
#include "platform/files.h"

namespace kiv {

/// A text that many staves have, which is in memory once.
class SharedText {
 public:
  SharedText() = default;
  explicit SharedText(const std::string& text)
      : text_(text.empty() ? nullptr : std::make_shared<const std::string>(text)) {}

  const std::string& text() const {
    static const std::string none;
    return text_ ? *text_ : none;
  }

 private:
  std::shared_ptr<const std::string> text_;  // null without a character
};

/// A cue marker of a staff.
struct CueEvidence {
  int item = 0;                 ///< its number in the file, from 1
  std::int16_t instrument = 0;  ///< the instrument that it refers to

  bool operator==(const CueEvidence&) const = default;
};

/// What a page says about one staff: all evidence of its instrument. What it does not say is empty.
struct StaffEvidence {
  SharedText file;               ///< full name
  SharedText staff;              ///< its number in the file, in general number form
  int item = 0;                  ///< the number of its staff item, from 1; 0 when the page does not hold it any more
  std::int16_t id = 0;           ///< the instrument identifier as it stands in the page, not negative
  SharedText name;               ///< the text left of it
  std::optional<ClefForm> clef;  ///< the first one
  std::optional<float> lines;
  std::optional<float> size;
  std::optional<float> key;          ///< the first one: a number of sharps; one of flats is negative
  std::optional<float> brace;        ///< what the brace or bracket that begins at the staff spans
  std::optional<float> noteHeight;   ///< of its notes on the average, in staff steps
  std::optional<float> shownNumber;  ///< the instrument number that the page shows at the staff
  std::vector<CueEvidence> cues;     ///< in the order of the file
};

/// The staves of a system, from the top down.
struct SystemEvidence {
  std::int16_t number = 0;
  std::vector<StaffEvidence> staves;
};

/// The systems of a group in the order of its pages.
using GroupEvidence = std::vector<SystemEvidence>;

/// The evidence of the group that the facts are about. Reads each page file once more. Never ends the program: of a
/// page that cannot be read only what the facts say about it is known.
GroupEvidence gatherEvidence(Files& files, const GroupFacts& facts);

}  // namespace kiv
