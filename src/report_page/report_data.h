#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/numbered_texts.h"
#include "diagnostics/problem_texts.h"
#include "drawing/chart.h"

namespace kiv::report {

// What a report shows. All texts are UTF-8 that may be shown as it stands: nothing in it moves or hides other text.

/// A place that a problem is about.
struct ReportPlace {
  std::size_t system = 0;  ///< its number; 0 when it is not known
  std::string words;       ///< "PIECE007.MUS, staff 2, item 4"
};

/// All problems of one code.
struct ReportProblem {
  const ProblemText* text = nullptr;
  bool isWarning = false;           ///< nothing is wrong with the pages; a run changes or loses something
  std::vector<ReportPlace> places;  ///< in the order of the group; one without a place for a message about none
};

/// The systems with the same instruments in the same order.
struct ReportLayout {
  std::string label;        ///< "A" is the commonest
  std::string systems;      ///< "1 to 4, 7"
  std::string instruments;  ///< from the top, for A; what differs from A for others
  std::size_t count = 0;    ///< of systems
  /// The ids that differ from layout A: those that are missing, that A does not have, that are there more than once,
  /// and that are in another place.
  std::array<std::vector<std::int16_t>, 4> edits = {};
};

struct ReportInstrument {
  std::int16_t id = 0;
  std::string name;          ///< "" when no page has one
  std::string abbreviation;  ///< the same
  std::string clefs;
  std::string systems;  ///< "1 to 4, 7"
  std::size_t count = 0;
  std::string first;  ///< "system 1, PIECE001.MUS, staff 3"
  std::string last;
};

/// A staff of a picture. There are very many of them, so they are small.
struct PictureStaff {
  std::uint32_t code = 0;      ///< the items: a number in Pictures::codes
  std::uint32_t barlines = 0;  ///< the same
  int bottom = 0;              ///< y of the bottom line
  int left = 0;                ///< x of its ends
  int right = 0;
  int lines = 5;            ///< 0 for a hidden staff
  std::optional<float> id;  ///< none where the staff itself shows it
  bool isInserted = false;  ///< a rest staff that the conversion inserted
};

/// A mark on a picture.
struct PictureMark {
  std::size_t staff = 0;          ///< an index
  std::optional<int> x = {};      ///< of the item; none marks the whole staff
  std::size_t about = 0;          ///< an index in ReportData::problems or ::proposals
  std::optional<int> right = {};  ///< of a bar, its end; x is its begin
};

struct Picture {
  int width = 0;
  int height = 0;
  int origin = 0;                    ///< x of position 0
  std::vector<PictureStaff> staves;  ///< from the bottom up
  std::vector<PictureMark> problems;
  std::vector<PictureMark> proposals;
};

/// The pictures of one system.
struct SystemPicture {
  std::size_t system = 0;  ///< its number
  Picture before;
  std::optional<Picture> after;  ///< the result page
};

struct Pictures {
  NumberedTexts codes;
  NumberedTexts texts;
  std::vector<SystemPicture> systems;
  std::size_t leftOut = 0;  ///< pictures that were left out as the file would grow too large
};

/// A proposed correction of an id.
struct ReportProposal {
  std::size_t system = 0;  ///< its number; 0 when the group has no such staff
  std::string file;        ///< full name, as bytes of the code page; not shown
  float staff = 0;         ///< its number in the file
  int item = 0;            ///< of a cue marker; 0 for the staff
  std::string words;       ///< "PIECE007.MUS, staff 2: 110 Viola instead of 0"
  std::string label;       ///< for the picture: "0 → 110"
  std::string confidence;  ///< "sure", "likely", "guess", or what a table has
  std::string reason;
  std::string csvLine;  ///< the line of corrections.csv, with its end
  bool isAccepted = false;
};

/// What the table of corrections that the reader has makes of the group.
struct CorrectedPages {
  std::string table;         ///< its name, as UTF-8
  std::size_t problems = 0;  ///< that are left
  bool needConversion = false;
  bool haveResults = false;  ///< the results that are shown are those of the corrected pages
};

enum class VerdictKind { usable, needsConversion, hasProblems, damaged, converted, unfitResults };

/// The one thing to do next.
struct NextStep {
  std::string words;
  std::string command;             ///< "" when there is nothing to run
  std::string withoutScript;       ///< a command line that does what the page needs its script for; "" for none
  std::vector<std::string> panel;  ///< what to do in the window instead, step by step
  bool isForPanel = false;         ///< the reader is in front of the window
};

struct ReportData {
  std::string title;  ///< of the piece
  std::string made;   ///< when, and by what
  std::string state;  ///< stands for the state of the pages, of letters and digits; "" for none
  std::size_t pages = 0;
  std::size_t files = 0;
  std::size_t systems = 0;
  std::size_t instrumentCount = 0;
  std::size_t deviating = 0;     ///< systems that are not of the commonest layout
  std::size_t severalFiles = 0;  ///< pages that consist of several files
  std::size_t skipped = 0;       ///< pages that could not be read
  VerdictKind kind = VerdictKind::usable;
  std::string headline;
  std::string details;
  NextStep next;
  Chart chart;  ///< its names are UTF-8 as well
  std::vector<std::size_t> layoutOfSystem;
  std::vector<ReportLayout> layouts;
  std::vector<ReportInstrument> instruments;
  std::vector<ReportProblem> problems;
  std::vector<ReportProposal> proposals;
  std::optional<CorrectedPages> corrected;  ///< none without a table, and when it changes nothing
  std::size_t undecided = 0;                ///< ids that are wrong, and for which none is proposed
  std::string csvHead;                      ///< the first line of corrections.csv, with its end
  bool hasResults = false;                  ///< that are shown
  std::vector<std::string> misfits;  ///< why results are not shown, a sentence each; they are not of these systems
  std::size_t firstMissing =
      0;  ///< the first system without a result, if those before fit and no later one has any; or 0
  Pictures pictures;
};

/// How many places the problems name, or else the warnings.
inline std::size_t placesOf(const ReportData& data, bool areWarnings) {
  std::size_t count = 0;
  for (const ReportProblem& problem : data.problems) {
    count += problem.isWarning == areWarnings ? problem.places.size() : 0;
  }
  return count;
}

}  // namespace kiv::report
