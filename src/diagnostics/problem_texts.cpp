#include "diagnostics/problem_texts.h"

#include <algorithm>
#include <array>

#include "messages/codes.h"

namespace kiv {
namespace {

constexpr std::array groupTexts = {
    ProblemText{
        code::zeroInstrumentId, "Staff without an instrument id",
        "A staff has the instrument id 0, which stands for no instrument.",
        "A conversion orders staves by their ids, so it cannot know where this staff belongs.",
        "Give the staff the id of its instrument: see what kivsys suggest proposes. If staves without an id are "
        "meant, use --allow-zero-id."},
    ProblemText{code::duplicateInstrumentId, "Two staves with the same instrument id",
                "Two or more staves of one system have the same instrument id.",
                "A conversion takes them for one instrument and may mix their music up.",
                "Give each staff an id of its own: see what kivsys suggest proposes."},
    ProblemText{code::duplicateStaffNumber, "Two staves with the same number",
                "Two or more staves of one page have the same staff number.",
                "The notes of both are on one staff for a conversion.",
                "Number the staves from the bottom of the page to its top in the notation program, and save the page."},
    ProblemText{code::recursiveCue, "Cue from its own instrument",
                "A cue names the instrument of the very staff that it is on.",
                "Parts would show the player a cue from the own part.",
                "Give the cue the id of the instrument that it quotes."},
    ProblemText{code::undefinedCue, "Cue from an instrument that is not there",
                "A cue names an instrument id that no staff of its system has.",
                "The music for the cue cannot be found when parts are made.",
                "Correct the id of the cue, or that of the staff that it quotes: see what kivsys suggest proposes."},
    ProblemText{code::pageLetters, "Page letters with a gap",
                "The files of a page do not have the letters A, B, C without a gap.",
                "A file of the page may be missing, and its staves with it.",
                "Find the missing file, or rename the files so that their letters begin with A."},
    ProblemText{code::noSystemBarline, "No barline joins the system",
                "The barlines at the left of a page of several files join no staves to a system.",
                "It cannot be known which staves sound together, so the analysis ends here.",
                "Add the barline at the left end of the system in the notation program, and save the page."},
    ProblemText{code::structureError, "Damaged page",
                "The file is not a whole page: an item in it is broken, or the file ends too early.",
                "What follows the damage cannot be read, so the page is left out.",
                "Restore the page from a backup, or save what it still holds with kivsys recover."},
    ProblemText{code::tooManyItems, "Page with too many items", "The page has more than 5000 items.",
                "It does not fit into the tables of an analysis, so the page is left out.",
                "Split the page into several in the notation program."},
    ProblemText{code::overflow, "Number out of range", "A page or the report has a number that is too large.",
                "The analysis cannot count with it, and ends.",
                "Correct the item that the message names; kivsys dump shows it."},
    ProblemText{code::subscriptOutOfRange, "More than the tables hold",
                "There are more pages, systems or items than the tables of the program hold.", "The run ends here.",
                "Work on fewer pages at a time, or split a page that is too full."},
    ProblemText{code::typeMismatch, "Text instead of a number",
                "A record of the report has a text where a number belongs.",
                "The report was changed by something else, and the run ends.", "Analyze the pages again."},
    ProblemText{code::divisionByZero, "Bar without a length", "A bar has no length to divide.",
                "Rests for an inserted staff cannot be counted, and the conversion ends.",
                "Correct the time signature or the rests of the instrument that the message names."},
    ProblemText{code::runTimeError, "The system reported an error",
                "The operating system could not do what was asked; its own words follow.", "The run ends here.",
                "Check the disk and the permissions of the file, and repeat the command."},
    ProblemText{code::fileChanged, "File changed during the run", "Another program changed a file while it was in use.",
                "What was read may not fit together, so the run ends.",
                "Close the other program, and repeat the command."},
    ProblemText{code::naming, "File name that is no page name",
                "The name of the file is not letters, then digits, then at most one page letter.",
                "The order of the pages is in their names, so it cannot be known.",
                "Rename the file, for example to PIECE012.MUS."},
    ProblemText{code::namingNoNumber, "File name without a number", "The name of the file has no digits.",
                "The order of the pages is in their names, so it cannot be known.",
                "Rename the file, for example to PIECE012.MUS."},
    ProblemText{code::reservedName, "Name of a result",
                "The first page has the name of the first result, WORK0001.MUS.",
                "A conversion would write over its own input.", "Rename the pages."},
};

constexpr std::array warningTexts = {
    ProblemText{code::severalZeroIds, "Several staves without an id",
                "More than one staff of the system has no instrument id.", "A conversion cannot distinguish them.",
                "Give each staff the id of its instrument."},
    ProblemText{code::repeatedInstrumentId, "Instrument id used again",
                "A staff has the id of another staff of its system.", "A conversion may mix the two staves up.",
                "Give each staff an id of its own."},
    ProblemText{code::repeatedStaffNumber, "Staff number used again",
                "A staff has the number of another staff of its system.",
                "A conversion copies the items of both staves to each of them.",
                "Number the staves from bottom to top in the notation program."},
    ProblemText{code::negativeInstrumentId, "Negative instrument id", "A staff has an id below 0.",
                "It counts as the same number without the sign, which may be another instrument.",
                "Give the staff the id that is meant."},
    ProblemText{code::tooManyStaves, "More than 32 staves", "A result page would have more than 32 staves.",
                "Only 32 staves are written; the music on the others would be missing.",
                "Convert fewer instruments at a time, or correct wrong ids that add instruments."},
    ProblemText{code::nameWithComma, "Comma in a file name", "The name of a page file has a comma.",
                "Records of the report end a name at its comma, so the file is not found again.", "Rename the file."},
    ProblemText{code::hiddenBottomStaff, "Hidden staff at the bottom",
                "The staff whose barline joins the system is hidden.",
                "An analysis does not see it, so the staves above it are systems of their own.",
                "Show the staff, or begin the barline at the lowest visible staff."},
    ProblemText{code::itemOnNoStaff, "Items on no staff", "Items have a staff number that no staff has.",
                "A conversion leaves them out.", "Delete the items, or add their staff, in the notation program."},
    ProblemText{code::shortTextCut, "Text is cut", "A short text has more than 5 characters.",
                "A result has only its first 5 characters.", "Enter it as a long text if all of it is needed."},
    ProblemText{code::textFilled, "Text is filled up", "A text has less than the 24 characters of its field.",
                "A result has blanks after it, which are not seen.", "Nothing needs to be done."},
    ProblemText{code::staffP4Cleared, "Value of a staff is cleared", "The value P4 of a staff is not 0.",
                "A result has 0 there.", "Nothing needs to be done, unless another program uses this value."},
};

constexpr std::array musicTexts = {
    ProblemText{code::barRestLength, "Rest of another length",
                "The rests of a rest staff do not last as long as the music of the bar.",
                "A player of that staff counts wrongly.", "Convert with --fit."},
    ProblemText{code::barTwoRests, "Two rests at the same time", "Two rests of a rest staff fill the same time.",
                "The bar looks twice as long as it is.", "Convert with --fit."},
    ProblemText{code::barWithoutRest, "Bar without a rest", "A bar of a rest staff is empty.",
                "The bar looks as if something was lost.", "Convert with --fit."},
    ProblemText{code::keyOrTimeDiffers, "Key or time of a rest staff",
                "From this bar on, the key or the time of a rest staff is not that of its system.",
                "The staff contradicts the others.", "Convert with --fit."},
    ProblemText{code::lateEntryUnknown, "Look of a rest staff",
                "A rest staff has not the size, the lines or the clef with which its instrument enters later.",
                "The instrument seems to change.", "Convert with --fit."},
    ProblemText{code::clefDiffers, "Clef of a rest staff",
                "The clef of a rest staff is not the last one that its instrument had before.",
                "The instrument seems to change its clef where it is silent.", "Convert with --fit."},
    ProblemText{code::braceDisplaced, "Brace in the wrong place",
                "Braces or brackets stand away from the left edge of their system.",
                "They do not join the staves in print.", "Convert with --fit."},
    ProblemText{code::stavesDisagree, "Staves of unequal length",
                "The staves that play last unequally long in this bar.", "The length of the bar is a guess.",
                "Look at the bar in the notation program."},
    ProblemText{code::noTimeSignature, "No time signature", "No page has a time signature.", "Bars of 4/4 are assumed.",
                "Enter the time signature in the notation program."},
    ProblemText{code::durationTooLong, "Duration too long",
                "A note or rest of the bar lasts longer than any music, so it is not counted.",
                "The length of the bar is a guess.", "Correct the duration in the notation program."},
    ProblemText{code::keyNotShown, "Key not shown",
                "No staff of the system has a key signature at its begin, though one had accidentals before.",
                "Rest staves may keep a key that has changed to C major.",
                "If it has changed, enter a key signature without accidentals in the notation program."},
    ProblemText{code::resultsNotChecked, "Results not checked",
                "The result cannot be read, so its rest staves and those of the results after it are not checked.",
                "They may not fit the music.", "Convert again, and check the disk."},
};

constexpr std::array selectionTexts = {
    ProblemText{code::noInputFiles, "No pages", "No page file was selected.", "There is nothing to work on.",
                "Name the pages or their folder."},
    ProblemText{code::namesNotTerminated, "Line of a names file without its end",
                "A line of the names file does not end with a blank and the digit 1.", "The page in it is left out.",
                "Add the blank and the digit 1 to the line."},
    ProblemText{code::namesNoFolder, "Name without a folder", "A line of the names file has a name without its folder.",
                "The page cannot be found.", "Write the full path in the line."},
    ProblemText{code::namesFoldersDiffer, "Pages in several folders",
                "The pages of a names file are in several folders.", "They are not one group.",
                "Put the pages of a piece into one folder."},
    ProblemText{code::namesFileMissing, "Page not found", "A page of the names file is not there, or cannot be read.",
                "The group cannot be analyzed.", "Correct the name, or remove the line."},
    ProblemText{code::namesNotErased, "Names file not deleted", "The names file could not be deleted.",
                "It will be read again.", "Delete it by hand if it is no longer needed."},
};

constexpr std::array runTexts = {
    ProblemText{code::reportNotCreated, "Report not written", "The file KivSystem2.TXT cannot be written.",
                "Without it there is no verdict and no conversion.", "Check the folder and its permissions."},
    ProblemText{code::reportNotRead, "Report not found", "The file KivSystem2.TXT cannot be read.",
                "A conversion needs it.", "Analyze the pages again."},
    ProblemText{code::verdictNotCreated, "Verdict not written", "The file KivSystem1.TXT cannot be written.",
                "Programs that ask for the verdict do not find it.", "Check the folder and its permissions."},
    ProblemText{code::verdictNotRead, "Verdict not found", "The file KivSystem1.TXT cannot be read.",
                "The result of the analysis is not known.", "Analyze the pages again."},
    ProblemText{code::resultNotWritten, "Result not written", "A result page cannot be written.",
                "The conversion ends; results before it are complete.",
                "Check the folder, its permissions and the disk."},
    ProblemText{
        code::resultUnreadable, "Result would be damaged", "A result page could not be read back, and was not written.",
        "The conversion ends before it does harm.", "Correct the item that the message names; kivsys dump shows it."},
    ProblemText{code::timeSignature, "Time signature that cannot be counted",
                "A time signature has numbers that no bar can have.",
                "Rests cannot be counted, and the conversion ends.", "Correct the time signature."},
    ProblemText{code::noStaves, "System without staves", "A page of the conversion has no staves.",
                "The conversion ends.", "Analyze the pages again, then convert them."},
    ProblemText{code::systemBarline, "Not a page of one system",
                "A page to be sorted does not have exactly one system.", "The page is not sorted.",
                "Sort only pages of one system, such as results of a conversion."},
    ProblemText{code::sortProblem, "Staves cannot be sorted", "The staves of a page could not be put in order.",
                "The page is not sorted.", "Check the ids and the numbers of its staves."},
    ProblemText{code::logicalError, "Contradiction in a page", "Items of a page contradict each other.",
                "The conversion ends.", "Run kivsys trace, and look at the system that it ended with."},
    ProblemText{code::programmingError, "Error of the program", "The program met a case that it does not know.",
                "The result cannot be trusted.", "Report the error, with the pages."},
    ProblemText{code::programNotStarted, "Program not started", "Another program could not be started.",
                "What it was to do is not done.", "Check that the program is installed."},
    ProblemText{code::stoppedByUser, "Stopped", "A question was answered with No.", "The run ended early.",
                "Repeat the command when you want it to continue."},
    ProblemText{code::fileExists, "File exists", "A file that would be written is there already.",
                "Its content would be lost.", "Answer Yes to replace it, or name another folder."},
    ProblemText{code::qualifies, "No conversion needed", "All systems have the same instruments in the same order.",
                "The pages can be used as they are.", "Nothing needs to be done."},
    ProblemText{code::analysisResult, "Conversion needed", "The systems differ, or pages consist of several files.",
                "Programs that follow need systems of one layout.", "Convert the pages."},
    ProblemText{code::created, "Pages written", "The conversion has written its results.", "They can be used now.",
                "Check them with kivsys verify."},
    ProblemText{code::sortFinished, "Pages sorted", "The staves of the pages are sorted.", "They can be used now.",
                "Nothing needs to be done."},
    ProblemText{code::other, "Other message", "A message without a code of its own; its text says what it is about.",
                "It depends on the message.", "Read the message."},
};

/// The texts of codes that say something else about an item of a page.
constexpr std::array itemTexts = {
    ProblemText{code::subscriptOutOfRange, "Damaged item",
                "An item of the page has more numbers than any item can have, so its bytes are broken.",
                "What follows the damage cannot be read, so the page is left out.",
                "Restore the page from a backup, or save what it still holds with kivsys recover."},
};

struct Section {
  std::string_view title;
  std::span<const ProblemText> texts;
};

constexpr std::array<Section, 5> sections = {{{"Problems of pages", groupTexts},
                                              {"Warnings: what a run loses or changes", warningTexts},
                                              {"Warnings: rest staves that do not fit the music", musicTexts},
                                              {"Problems of the selection", selectionTexts},
                                              {"Messages of a run", runTexts}}};

constexpr std::size_t textCount =
    groupTexts.size() + warningTexts.size() + musicTexts.size() + selectionTexts.size() + runTexts.size();

constexpr std::array<ProblemText, textCount> allTexts = [] {
  std::array<ProblemText, textCount> all{};
  std::size_t next = 0;
  for (const Section& section : sections) {
    for (const ProblemText& text : section.texts) {
      all.at(next++) = text;
    }
  }
  return all;
}();

}  // namespace

std::span<const ProblemText> problemTexts() {
  return allTexts;
}

const ProblemText& problemTextOf(std::string_view code, bool isAboutItem) {
  const auto isOfCode = [&](const ProblemText& text) { return text.code == code; };
  const auto ofItem = std::find_if(itemTexts.begin(), itemTexts.end(), isOfCode);
  if (isAboutItem && ofItem != itemTexts.end()) {
    return *ofItem;
  }
  const auto found = std::find_if(allTexts.begin(), allTexts.end(), isOfCode);
  return found == allTexts.end() ? allTexts.back() : *found;
}

namespace {

void appendText(const ProblemText& problem, std::string_view about, std::string& text) {
  text.append("\n### `").append(problem.code).append("`").append(about).append(": ").append(problem.title);
  text.append("\n\n").append(problem.meaning).append(" ").append(problem.effect);
  text.append(" **What to do:** ").append(problem.remedy).append("\n");
}

}  // namespace

std::string problemsDocument() {
  std::string text =
      "# Problems and messages\n\n"
      "Look up a code here to see what was found, why it matters, and what to do. Reports have the same texts, with "
      "every\n"
      "place. JSON has the code with each message and problem.\n";
  for (const Section& section : sections) {
    text.append("\n## ").append(section.title).append("\n");
    for (const ProblemText& problem : section.texts) {
      appendText(problem, "", text);
      if (const ProblemText& ofItem = problemTextOf(problem.code, true); &ofItem != &problemTextOf(problem.code)) {
        appendText(ofItem, " at an item of a page", text);
      }
    }
  }
  return text;
}

}  // namespace kiv
