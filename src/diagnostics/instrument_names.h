#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The longest text that is taken for a name, in bytes.
inline constexpr std::size_t longestInstrumentName = 100;

/// What the pages of a group call an instrument, as bytes of the code page.
struct InstrumentName {
  std::string full;          ///< "Flute"; "" when no page has more than an abbreviation
  std::string abbreviation;  ///< "Fl."; "" when no page has one

  /// The full name, or else the abbreviation.
  const std::string& shown() const { return full.empty() ? abbreviation : full; }
  bool empty() const { return shown().empty(); }
  bool operator==(const InstrumentName&) const = default;
};

/// Whether the character is a letter; bytes beyond ASCII are, whatever the code page.
bool isNameLetter(char c);

/// Whether the text is an abbreviation by itself: a word of it ends with a period, or it begins with several letters of
/// which none is a vowel.
bool isAbbreviation(std::string_view text);

/// Whether the text has less letters and digits than the name, and these stand in the name in the same order, the first
/// at the begin of a word: "Vl. I" of "Violins I". Capitals and small letters of ASCII are the same.
bool isShortFormOf(std::string_view text, std::string_view name);

/// Where a text stands that may name an instrument. The better place comes first.
enum class NamePlace {
  besideStaff,
  betweenStaves,  ///< it may name the staff above it, the one below it, or both
};

/// The texts that may name one instrument.
class NameCandidates {
 public:
  /// Adds a text, once for each of its places. Beyond the first fifty texts, others are ignored.
  void add(const std::string& text, NamePlace place);
  /// The name that most texts are, or are short forms of; of equally supported ones the longest. Texts between staves
  /// count only where there is none beside a staff.
  InstrumentName best() const;
  /// Whether all texts in the better places are the best name or its short forms.
  bool agree() const;

 private:
  struct Candidate {
    std::string text;
    std::string key;  ///< its letters and digits
    NamePlace place = NamePlace::besideStaff;
    std::size_t count = 0;
  };

  std::vector<Candidate> inBestPlace() const;

  std::vector<Candidate> candidates_;
};

}  // namespace kiv
