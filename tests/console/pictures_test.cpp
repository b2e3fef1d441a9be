#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <pty.h>
#include <stdlib.h>  // setenv
#include <sys/wait.h>
#include <unistd.h>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

const std::string onePage = "staff 1 at 0 lines 5 instrument 5\nbarline 1 at 0 spans 1\nnote 1 at 20 duration 1\n";

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST(Draw, PrintsTheDrawing) {
  const Workplace place;
  place.write("PIECE001.MUS", page(onePage));
  const Ended ended = place.kivsys({"draw", "PIECE001.MUS"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error, "");
  EXPECT_TRUE(ended.out.starts_with("<svg ")) << ended.out;
  EXPECT_TRUE(ended.out.ends_with("</svg>\n"));
  EXPECT_NE(ended.out.find("<title>PIECE001.MUS</title>"), std::string::npos);
  EXPECT_EQ(place.kivsys({"draw", "PIECE001.MUS", "--out", "-"}).out, ended.out);
}

TEST(Draw, WritesTheDrawing) {
  const Workplace place;
  place.write("PIECE001.MUS", page(onePage));
  place.write("out/page.svg", "<svg>old</svg>");
  const Ended ended = place.kivsys({"draw", "PIECE001.MUS", "--out", "out/page.svg"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out + ended.error, "");
  EXPECT_EQ(place.read("out/page.svg"), place.kivsys({"draw", "PIECE001.MUS"}).out);
  EXPECT_EQ(filesIn(place.path() / "out"), std::vector<std::string>{"page.svg"});
}

TEST(Draw, NamesThePageItsSystemsAndBars) {
  const Workplace place;
  place.write("PIECE001.MUS", page(onePage + "barline 1 at 50 spans 1\nbarline 1 at 90 spans 1\n"));
  const std::string svg = place.kivsys({"draw", "PIECE001.MUS"}).out;
  EXPECT_NE(svg.find(">PIECE001.MUS</text>"), std::string::npos) << svg;
  EXPECT_NE(svg.find(">system 1, bars 1 to 2</text>"), std::string::npos) << svg;
}

TEST(Draw, ShortNotesOfABeatHaveABeamAndSingleOnesFlags) {
  const Workplace place;
  place.write("PIECE001.MUS", page("staff 1 at 0 lines 5\ntimesignature 1 at 9 upper 2 lower 4\n"
                                   "note 1 at 20 duration 0.5\nnote 1 at 30 duration 0.5\n"
                                   "note 1 at 40 duration 0.5\nrest 1 at 50 duration 0.5\n"));
  const std::string svg = place.kivsys({"draw", "PIECE001.MUS"}).out;
  EXPECT_EQ(countOf(svg, "class=\"beam\""), 1U) << svg;
  EXPECT_EQ(countOf(svg, "class=\"flag\""), 1U) << "of the note beside the rest";
}

TEST(Draw, ABrokenPageIsACriticalMessage) {
  const Workplace place;
  place.write("PIECE001.MUS", "ab");
  const Ended ended = place.kivsys({"draw", "PIECE001.MUS", "--out", "page.svg"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("kivsys: PIECE001.MUS: item 1: Structural error in MUS file\n")) << ended.error;
  EXPECT_EQ(place.read("page.svg"), "(no file)");
  EXPECT_EQ(place.kivsys({"draw", "MISSING1.MUS"}).status, 2);
}

TEST(Draw, AFileThatCannotBeWrittenIsAFailure) {
  const Workplace place;
  place.write("PIECE001.MUS", page(onePage));
  const Ended ended = place.kivsys({"draw", "PIECE001.MUS", "--out", "nowhere/page.svg"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("kivsys: cannot write ")) << ended.error;
}

TEST(Draw, WrongUsageDiffersFromHelp) {
  const Workplace place;
  EXPECT_EQ(place.kivsys({"draw"}).status, 2);
  EXPECT_EQ(place.kivsys({"chart"}).status, 2);
  EXPECT_EQ(place.kivsys({"chart", "--names", "n.txt", "PIECE001.MUS"}).status, 2);
  EXPECT_NE(place.kivsys({"draw", "--help"}).out.find("kivsys draw PIECE001.MUS"), std::string::npos);
  EXPECT_NE(place.kivsys({"chart", "--help"}).out.find("kivsys chart PIECE*.MUS"), std::string::npos);
}

TEST(Chart, MessagesAreSeparateFromTheChart) {
  const Workplace place;
  place.write("PIECE001.MUS", page("staff 1 at 0 lines 5\nbarline 1 at 0 spans 1\n"));
  const Ended ended = place.kivsys({"chart", "PIECE001.MUS"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(ended.error.starts_with("kivsys: PIECE001.MUS: note: Zero instrId(s); ")) << ended.error;
  EXPECT_NE(ended.out.find("\n       0 |0|\n"), std::string::npos) << ended.out;
  const Ended allowed = place.kivsys({"chart", "--allow-zero-id", "PIECE001.MUS"});
  EXPECT_EQ(allowed.error, "");
  EXPECT_NE(allowed.out.find("\n       0 |#|\n"), std::string::npos) << allowed.out;
}

TEST(Chart, ACriticalMessageEndsIt) {
  const Workplace place;
  place.write("PIECE001.MUS", "ab");
  const Ended ended = place.kivsys({"chart", "PIECE001.MUS", "--out", "chart.svg"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("kivsys: PIECE001.MUS: item 1: ")) << ended.error;
  EXPECT_EQ(place.read("chart.svg"), "(no file)");
}

TEST(Chart, TheDrawingIsInTheUsersCurrentFolder) {
  const Workplace place;
  place.write("PIECE001.MUS", page(onePage));
  place.write("names.txt", place.corePath("PIECE001.MUS") + " 1\r\n");
  fs::create_directory(place.path() / "run");
  const Ended ended = place.kivsys({"chart", "--folder", "run", "--names", "names.txt", "--out", "chart.svg"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(ended.out, "");
  EXPECT_TRUE(place.read("chart.svg").starts_with("<svg "));
  EXPECT_EQ(filesIn(place.path() / "run"), std::vector<std::string>{});
  EXPECT_EQ(place.kivsys({"chart", "PIECE001.MUS", "--out", "-"}).out, place.read("chart.svg"));
}

/// What kivsys prints on a terminal of this number of columns.
std::string onTerminal(const Workplace& place, unsigned short columns, bool noColour) {
  int terminal = -1;
  winsize size{24, columns, 0, 0};
  const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
  if (child == 0) {
    if (::chdir(place.path().c_str()) == 0) {
      ::setenv("TERM", "xterm", 1);
      noColour ? ::setenv("NO_COLOR", "1", 1) : ::unsetenv("NO_COLOR");
      ::execl(KIVSYS_PROGRAM, "kivsys", "chart", "PIECE001.MUS", nullptr);
    }
    ::_exit(127);
  }
  EXPECT_GT(child, 0);
  std::string text;
  char buffer[256];
  // A terminal whose other side is gone reads as a failure.
  for (ssize_t count = 0; (count = ::read(terminal, buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0) << text;
  ::close(terminal);
  return text;
}

TEST(Chart, IsColoredOnATerminalUnlessTheUserWantsNone) {
  const Workplace place;
  place.write("PIECE001.MUS", page(onePage));
  EXPECT_NE(onTerminal(place, 80, false).find("|\x1B[32m#\x1B[0m|"), std::string::npos);
  EXPECT_NE(onTerminal(place, 80, true).find("|#|"), std::string::npos);
  EXPECT_NE(place.kivsys({"chart", "PIECE001.MUS"}).out.find("|#|"), std::string::npos) << "no terminal";
}

TEST(Chart, WrapsToTheTerminal) {
  const Workplace place;
  std::string systems;
  for (int staff = 40; staff >= 1; --staff) {
    systems += "staff " + std::to_string(staff) + " at 0 lines 5 instrument 5\n";
  }
  place.write("PIECE001.MUS", page(systems));
  const std::string text = onTerminal(place, 50, true);
  EXPECT_NE(text.find("\n  system  1 "), std::string::npos);
  EXPECT_NE(text.find("\n  system  21  23"), std::string::npos) << text;
}

/// A group of pages with a system each, which has the first of two instruments and every second time the other.
void writeGroup(const Workplace& place, int pages) {
  const std::string one = page("staff 1 at 0 lines 5 instrument 5\nbarline 1 at 0 spans 1\n");
  const std::string two =
      page("staff 1 at 0 lines 5 instrument 5\nstaff 2 at 0 lines 5 instrument 6\nbarline 1 at 0 spans 2\n");
  for (int i = 1; i <= pages; ++i) {
    place.write("music/SONATA-" + std::to_string(10000 + i) + ".MUS", i % 2 == 0 ? one : two);
  }
}

TEST(Chart, ThousandsOfSystemsPrintOnSheetsOfA4WithHeadings) {
  const Workplace place;
  writeGroup(place, 3000);
  const std::string svg = place.kivsys({"chart", "music", "--out", "-"}).out;
  const std::size_t sheets = countOf(svg, "<g class=\"sheet\"");
  ASSERT_GT(sheets, 5U);
  EXPECT_NE(svg.find("@page { size: 1123px 793px; margin: 0; }"), std::string::npos) << "a sheet is a printed page";
  EXPECT_NE(svg.find(" height=\"" + std::to_string(793 * sheets) + "\""), std::string::npos);
  EXPECT_EQ(countOf(svg, ">SONATA</text>"), sheets) << "the title of each";
  EXPECT_EQ(countOf(svg, "class=\"pagename\""), 3000U) << "every column has the name of its page";
  EXPECT_NE(svg.find(">SONATA-13000</text>"), std::string::npos);
  EXPECT_NE(svg.find(">staff that a conversion moves</text>"), std::string::npos);
  EXPECT_EQ(svg.find("several staves of one id"), std::string::npos) << "the legend lists only what occurs";
}

TEST(Chart, WrapsAfterTheNumberOfSystemsThatIsAskedFor) {
  const Workplace place;
  writeGroup(place, 7);
  const Ended text = place.kivsys({"chart", "music", "--per-row", "3"});
  EXPECT_EQ(text.status, 0);
  EXPECT_EQ(countOf(text.out, "\n  system  "), 3U) << text.out;
  EXPECT_TRUE(text.out.starts_with("SONATA: 7 systems on 7 pages, 2 instruments")) << text.out;
  EXPECT_EQ(countOf(place.kivsys({"chart", "music", "--per-row", "3", "-o", "-"}).out, "<g class=\"row\">"), 3U);
  EXPECT_EQ(place.kivsys({"chart", "music", "--per-row", "0"}).status, 2);
}

TEST(Chart, ALongNameIsEscapedAndCut) {
  const Workplace place;
  const std::string name(60, 'N');
  place.write("X1.MUS", page("staff 1 at 0 lines 5 instrument 5\nbarline 1 at 0 spans 1\ntext 1 at -10 p4 4 \"" + name +
                             "<&>\"\n"));
  const std::string svg = place.kivsys({"chart", "X1.MUS", "-o", "-"}).out;
  EXPECT_NE(svg.find("<title>" + name + "&lt;&amp;&gt; 5</title>"), std::string::npos) << svg;
  EXPECT_NE(svg.find("NN\xE2\x80\xA6 5</text>"), std::string::npos) << "cut at the label";
  EXPECT_NE(place.kivsys({"chart", "X1.MUS"}).out.find("\nPage X1.MUS\n"), std::string::npos);
}

/// The bundled piece, as the reference shows it.
class PicturesOfTheExample : public ::testing::Test {
 protected:
  void SetUp() override {
    arguments = {"chart"};
    for (const std::string& file : filesIn(EXAMPLE_FOLDER)) {
      if (file.starts_with("SYMPH")) {
        const std::string page = file.substr(0, file.rfind('.')) + ".MUS";
        ASSERT_EQ(place.kivsys({"build", (fs::path(EXAMPLE_FOLDER) / file).string(), page}).status, 0);
        arguments.push_back(page);
      }
    }
  }
  Workplace place;
  std::vector<std::string> arguments;
};

/// The indented block after the one that is only the command.
std::string blockAfter(const std::string& command) {
  std::ifstream reference(fs::path(DOCS_FOLDER) / "cli-pages.md");
  const std::string indent = "    ";
  std::string line;
  while (std::getline(reference, line) && line != indent + command) {
  }
  while (std::getline(reference, line) && !line.starts_with(indent)) {
  }
  std::string shown;
  for (; reference && (line.empty() || line.starts_with(indent)); std::getline(reference, line)) {
    shown += (line.empty() ? "" : line.substr(indent.size())) + "\n";
  }
  // The empty line in front of what follows.
  return shown.substr(0, shown.size() - 1);
}

TEST_F(PicturesOfTheExample, TheReferenceShowsTheChartThatIsPrinted) {
  const Ended ended = place.kivsys(arguments);
  EXPECT_EQ(ended.error, "");
  EXPECT_EQ(blockAfter("kivsys chart SYMPH*.MUS"), ended.out);
}

TEST_F(PicturesOfTheExample, ResultsHaveTheirRestStavesTinted) {
  fs::create_directory(place.path() / "results");
  arguments[0] = "convert";
  arguments.insert(arguments.end(), {"--result", "results/WORK0001.MUS"});
  ASSERT_EQ(place.kivsys(arguments).status, 0);
  const std::vector<int> rests = {0, 6, 0, 10, 10, 10, 10};
  for (std::size_t i = 0; i < rests.size(); ++i) {
    const std::string svg = place.kivsys({"draw", "results/WORK000" + std::to_string(i + 1) + ".MUS"}).out;
    const std::string tint = "<rect class=\"made\"";
    int tints = 0;
    for (std::size_t at = svg.find(tint); at != std::string::npos; at = svg.find(tint, at + 1)) {
      ++tints;
    }
    EXPECT_EQ(tints, rests[i] == 0 ? 0 : rests[i] + 1) << "result " << i + 1;
  }
}

}  // namespace
}  // namespace kiv::test
