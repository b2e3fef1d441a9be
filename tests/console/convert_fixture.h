#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "pagetext/page_text.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using Names = std::vector<std::string>;

inline const std::string fluteAndBass =
    "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
inline const std::string bass = "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n";

/// The results of fluteAndBass and of bass after it, without instrument numbers.
inline const std::string plainFluteAndBass =
    "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\nstaff 2 at 0 instrument 101\n";
inline const std::string plainBass = plainFluteAndBass + "clef 2 at 2\n";

/// The same with their instrument numbers.
inline const std::string numberedFluteAndBass =
    "item 10 1 -4 0 102 0.7\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n"
    "item 10 2 -4 0 101 0.7\nstaff 2 at 0 instrument 101\n";
inline const std::string numberedBass = numberedFluteAndBass + "clef 2 at 2\n";

inline const std::string qualifies =
    "Input qualifies for conversion to one file per system.\r\n"
    "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.";
inline const std::string doesNotQualify =
    "Result of the Analysis.\r\nNumber of files processed: 2\r\nNumber of staves (instruments) per system: 2\r\n\r\n"
    "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n\r\nInput does NOT qualify for conversion\r\n"
    "Use Convert button to create consistent input for KivScore2XML or KivSpli6.";
inline const std::string verdictOfTwo = "CONSISTENCY=NO\nMULTIFILE=NO\nFiles: 2\nSystems: 2\nInstruments: 2\n";
inline const std::string verdictOfOne = "CONSISTENCY=YES\nMULTIFILE=NO\nFiles: 1\nSystems: 1\nInstruments: 1\n";

/// What standard error says of them.
inline const std::string qualifiesNote =
    "kivsys: note: Input qualifies for conversion to one file per system; The resulting file(s) can be used as input "
    "to KivScore2XML and/or KivSplit\n";
inline const std::string needsConversionNote =
    "kivsys: note: the pages need a conversion: CONSISTENCY=NO, MULTIFILE=NO\n";
inline std::string createdNote(int count, const std::string& first, const std::string& last) {
  return "kivsys: note: Created " + std::to_string(count) + " files; First is " + first + "; Last is " + last + "\n";
}

/// A message as standard error shows it in a run like the panel's.
inline std::string shown(const std::string& severity, const std::string& text) {
  std::string lines = severity + ": ";
  for (const char c : text) {
    lines += c == '\r' ? "" : c == '\n' ? "\n  " : std::string(1, c);
  }
  return lines + "\n";
}

inline std::string created(int count, const std::string& first, const std::string& last) {
  return "Created " + std::to_string(count) + " files.\r\nFirst is " + first + "\r\nLast is " + last;
}

inline Json message(const std::string& icon, const std::string& text, const std::string& answer = "ok") {
  return {{"icon", icon}, {"text", text}, {"answer", answer}};
}

class ConsoleConvert : public ::testing::Test {
 protected:
  void addPage(const std::string& file, const std::string& text) const { place.write(file, page(text)); }
  /// Two pages that do not qualify.
  void addTwo(const std::string& folder = "") const {
    addPage(folder + "x1.mus", fluteAndBass);
    addPage(folder + "x2.mus", bass);
  }
  /// The page file as text, to be compared with asDumped.
  std::string dumped(const std::string& file) const { return dumpPage(place.read(file)); }
  static std::string asDumped(const std::string& text) { return dumpPage(page(text)); }

  Workplace place;
};

}  // namespace kiv::test
