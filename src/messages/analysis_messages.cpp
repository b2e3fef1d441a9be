#include "messages/analysis_messages.h"

#include "messages/new_message.h"

namespace kiv::messages {
namespace {

constexpr const char* unpredictable = "Results are unpredictable.";

/// A finding: what it is, the page, and more about it.
Message finding(std::string_view code, const std::string& what, const CheckedPage& page, const std::string& details) {
  const std::string where = page.multifile ? " in multipage files. Top file is: " : " in file: ";
  Message message = information(code, what + where + page.file + "\r\n" + details + unpredictable);
  if (!page.multifile) {
    message.location.file = page.file;
  }
  return message;
}

}  // namespace

Message duplicateInstrumentIds(const CheckedPage& page, const std::string& identifiers) {
  return finding(code::duplicateInstrumentId, "Duplicate instrument Id", page,
                 "InstrId(s): " + identifiers + "\r\n\r\n");
}

Message duplicateStaffNumbers(const CheckedPage& page, const std::string& staves) {
  const std::string word = page.multifile ? "Staff/staves(s): " : "Staff/staves: ";
  return finding(code::duplicateStaffNumber, "Duplicate staff number", page, word + staves + "\r\n\r\n");
}

Message zeroInstrumentIds(const CheckedPage& page) {
  return finding(code::zeroInstrumentId, "Zero instrId(s)", page, "\r\n");
}

Message recursiveCues(const CheckedPage& page) {
  return finding(code::recursiveCue, "Recursive cue(s)", page, "\r\n");
}

Message undefinedCues(const CheckedPage& page, const std::string& cues) {
  const std::string list = page.multifile ? "" : "Cues found for undefined instrument(s): " + cues + "\r\n";
  return finding(code::undefinedCue, "Reference to undefined instrId(s) in same system", page, "\r\n" + list);
}

Message noSystemBarline(const std::string& topFile) {
  Message message =
      critical(code::noSystemBarline, "No system barline encountered in multifile page. Top file is: " + topFile);
  message.location.file = topFile;
  return message;
}

Message reportNotCreated(const std::string& reportFile) {
  return critical(code::reportNotCreated, "Failed to create report file: " + reportFile);
}

Message reportNotReadForVerdict() {
  return critical(code::reportNotRead, "Could not open file KivSystem2.TXT for input.");
}

Message reportNotReadForCount() {
  return critical(code::reportNotRead, "Failed to open KivSystem2.txt for input.");
}

Message reportNotReadForConversion() {
  return critical(code::reportNotRead, "Failed to open file KivSystem2.TXT");
}

Message verdictNotCreated() {
  return critical(code::verdictNotCreated, "Failed to create file KivSystem1.TXT");
}

Message verdictNotRead() {
  return critical(code::verdictNotRead, "Failed to open KivSystem1.TXT for input.");
}

Message qualifies() {
  return information(code::qualifies,
                     "Input qualifies for conversion to one file per system.\r\n"
                     "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
}

Message analysisResult(const AnalysisResult& result) {
  return information(code::analysisResult,
                     "Result of the Analysis.\r\nNumber of files processed: " + std::to_string(result.files) +
                         "\r\nNumber of staves (instruments) per system: " + std::to_string(result.instruments) +
                         "\r\n\r\n" + result.consistency + "\r\n" + result.multifile +
                         "\r\n\r\nInput does NOT qualify for conversion"
                         "\r\nUse Convert button to create consistent input for KivScore2XML or KivSpli6.");
}

Message convertNow() {
  return {code::other, Icon::exclamation, Buttons::yesNo, "Convert?", {}, {}};
}

}  // namespace kiv::messages
