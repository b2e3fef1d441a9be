#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/console/example_pages.h"
#include "tests/console/json_schema.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

const std::string head =
    "folder,prefix,pages,systems,instruments,consistent,multifile,problems,files,names,bad_pages,needs_conversion,"
    "reasons\n";

class SurveyCommand : public ::testing::Test {
 protected:
  std::string survey(std::vector<std::string> options = {"--csv"}, const std::string& folder = "lib") const {
    options.insert(options.begin(), {"survey", folder});
    const Ended ended = place.kivsys(options);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.error, "");
    return ended.out;
  }

  Workplace place;
  const std::string solo = page("staff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 1\n");
  const std::string duo =
      page("staff 2 at 0 lines 5 instrument 8\nstaff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 2\n");
};

TEST_F(SurveyCommand, ShowsTheExampleAsTheReferenceDoes) {
  fs::create_directories(place.path() / "music" / "beethoven-9");
  buildExample(place, "music/beethoven-9");
  EXPECT_EQ(survey({}, "music"), shownInReference("kivsys survey music"));
}

TEST_F(SurveyCommand, WalksThroughAllFolders) {
  place.write("lib/B1.MUS", solo);
  place.write("lib/A1.MUS", solo);
  place.write("lib/deep/down/A1.MUS", solo);
  place.write("lib/deep/down/A2.MUS", duo);
  place.write("lib/deep/notes.txt", "no page");
  place.write("other/C1.MUS", duo);
  EXPECT_EQ(survey({"other", "--csv"}), head +
                                            "lib,A,1,1,1,yes,no,0,1,,,no,\nlib,B,1,1,1,yes,no,0,1,,,no,\n"
                                            "lib/deep/down,A,2,2,2,no,no,0,2,,,yes,\nother,C,1,1,2,yes,no,0,1,,,no,\n");
}

TEST_F(SurveyCommand, StrangeNamesAreNoObstacle) {
  place.write("lib/Bach/PIECE1.MUS", solo);
  place.write("lib/BACH/PIECE1.MUS", duo);  // not the same, whatever the case
  place.write("lib/a \"b\", c/x1.mus", solo);
  place.write("lib/ two  blanks /\xC3\xA4\xC3\x9F\x31.mus", solo);
  place.write("lib/100%/$-_7.MUS", solo);
  place.write("lib/line\nend/A1.MUS", solo);
  EXPECT_EQ(survey(),
            head +
                "lib/ two  blanks "
                ",\xC3\x84\xC3\x9F\x31.MUS,1,-,-,-,-,1,1,,\xC3\x84\xC3\x9F\x31.MUS,-,\xC3\xA4\xC3\x9F\x31.mus "
                "(File naming problem; the form is <letter(s)><digit(s)><optionally one sequence "
                "letter>.<suffix>)\nlib/100%,$-_,1,1,1,yes,no,0,1,,,no,\n"
                "lib/BACH,PIECE,1,1,2,yes,no,0,1,,,no,\nlib/Bach,PIECE,1,1,1,yes,no,0,1,,,no,\n"
                "\"lib/a \"\"b\"\", c\",X,1,1,1,yes,no,0,1,,,no,\n\"lib/line\nend\",A,1,-,-,-,-,1,1,,,-,"
                "A page file whose name holds a line end cannot be listed in a names file\n");
}

TEST_F(SurveyCommand, ATableHasALineForEachPieceWhateverItsName) {
  place.write("lib/line\nend/A1.MUS", solo);
  place.write("lib/l\xC3\xA4nger/A1.MUS", solo);
  EXPECT_EQ(
      survey({}),
      "folder         prefix  pages  systems  instruments  consistent  multifile  convert  problems  files  names, bad "
      "pages\n"
      "lib/line\\nend  A           1        -            -           -          -        -         1      1"
      "  not analyzed: A page file whose name holds a line end cannot be listed in a names file\n"
      "lib/l\xC3\xA4nger     A           1        1            1         yes         no       no         0      1\n"
      "2 pieces, 0 need a conversion, 1 bad\n");
}

TEST_F(SurveyCommand, BadPiecesDoNotStopIt) {
  place.write("lib/A1.MUS", "broken");
  place.write("lib/README.MUS", "no page");
  place.write("lib/Z1.MUS", page("staff 1 at 0 lines 5\nbarline 1 at 0 spans 1\n"));
  EXPECT_EQ(survey(), head +
                          "lib,A,1,-,-,-,-,1,1,,A1.MUS,-,A1.MUS (item 1: Structural error in MUS file)\n"
                          "lib,README.MUS,1,-,-,-,-,1,1,,README.MUS,-,README.MUS (File naming problem; the form is "
                          "<letter(s)><digit(s)><optionally one sequence letter>.<suffix>)\n"
                          "lib,Z,1,1,1,yes,no,1,1,,,no,\n");
}

TEST_F(SurveyCommand, JsonHasTheProblemsInWords) {
  place.write("lib/A1.MUS", "broken");
  place.write("lib/B1.MUS", duo);
  const auto object = nlohmann::json::parse(survey({"--json"}));
  EXPECT_EQ(schemaErrors(object, "survey"), std::vector<std::string>());
  EXPECT_EQ(object.at("interrupted"), false);
  const auto& pieces = object.at("pieces");
  ASSERT_EQ(pieces.size(), 2U);
  EXPECT_TRUE(pieces.at(0).at("systems").is_null());
  EXPECT_TRUE(pieces.at(0).at("problems").at(0).get<std::string>().starts_with("Structural error in MUS file"));
  EXPECT_EQ(pieces.at(1).at("instruments"), 2);
  EXPECT_EQ(pieces.at(1).at("problems").size(), 0U);
}

TEST_F(SurveyCommand, AnEmptyLibraryHasNoPieces) {
  fs::create_directory(place.path() / "lib");
  EXPECT_EQ(survey(), head);
  EXPECT_EQ(nlohmann::json::parse(survey({"--json"})).at("pieces").size(), 0U);
}

TEST_F(SurveyCommand, NothingIsWrittenIntoTheLibrary) {
  place.write("lib/A1.MUS", solo);
  survey();
  EXPECT_EQ(filesIn(place.path() / "lib"), std::vector<std::string>{"A1.MUS"});
  EXPECT_EQ(filesIn(place.path()), std::vector<std::string>{"lib"});
}

TEST_F(SurveyCommand, LinksToFoldersAreNotFollowed) {
  place.write("lib/A1.MUS", solo);
  fs::create_directory_symlink("..", place.path() / "lib" / "up");
  EXPECT_EQ(survey(), head + "lib,A,1,1,1,yes,no,0,1,,,no,\n");
}

TEST_F(SurveyCommand, ManyWorkersGiveTheLinesOfOne) {
  for (int i = 0; i < 50; ++i) {
    place.write("lib/f" + std::to_string(i % 7) + "/P" + std::string(1, static_cast<char>('A' + i % 26)) + "1.MUS",
                i % 3 == 0 ? duo : solo);
  }
  EXPECT_EQ(survey({"--csv", "--jobs", "8"}), survey({"--csv", "--jobs", "1"}));
}

TEST_F(SurveyCommand, AFinishedPieceIsReadFromTheStateUntilItChanges) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/B1.MUS", solo);
  const std::string lines = survey({"--csv", "--resume", "state"});
  EXPECT_EQ(survey({"--csv", "--resume", "state"}), lines);
  std::string state = place.read("state");
  EXPECT_EQ(std::count(state.begin(), state.end(), '\n'), 1 + 2);
  std::string::size_type at = 0;
  while ((at = state.find("\"systems\":1,", at)) != std::string::npos) {
    state.replace(at, 12, "\"systems\":77,");
  }
  place.write("state", state);
  EXPECT_EQ(survey({"--csv", "--resume", "state"}),
            head + "lib,A,1,77,1,yes,no,0,1,,,no,\nlib,B,1,77,1,yes,no,0,1,,,no,\n");
  place.write("lib/B1.MUS", duo);
  EXPECT_EQ(survey({"--csv", "--resume", "state"}),
            head + "lib,A,1,77,1,yes,no,0,1,,,no,\nlib,B,1,1,2,yes,no,0,1,,,no,\n");
  fs::last_write_time(place.path() / "lib/A1.MUS", fs::file_time_type::clock::now() - std::chrono::hours(1));
  EXPECT_EQ(survey({"--csv", "--resume", "state"}),
            head + "lib,A,1,1,1,yes,no,0,1,,,no,\nlib,B,1,1,2,yes,no,0,1,,,no,\n");
}

TEST_F(SurveyCommand, AStateThatWasCutShortIsUsedAsFarAsItGoes) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/B1.MUS", solo);
  const std::string lines = survey({"--csv", "--resume", "state"});
  const std::string state = place.read("state");
  for (std::size_t cut = state.find('\n') + 1; cut < state.size(); cut += 40) {
    place.write("state", state.substr(0, cut));
    EXPECT_EQ(survey({"--csv", "--resume", "state"}), lines) << cut;
    const std::string again = place.read("state");
    EXPECT_EQ(std::count(again.begin(), again.end(), '\n'), 1 + 2) << cut;
  }
}

TEST_F(SurveyCommand, WrongUsageIsRefused) {
  fs::create_directory(place.path() / "lib");
  EXPECT_EQ(place.kivsys({"survey"}).status, 2);
  EXPECT_EQ(place.kivsys({"survey", "nowhere"}).status, 2);
  EXPECT_EQ(place.kivsys({"survey", "lib", "--jobs", "0"}).status, 2);
  EXPECT_EQ(place.kivsys({"survey", "lib", "--csv", "--json"}).status, 2);
}

TEST_F(SurveyCommand, AStateThatCannotBeWrittenIsReported) {
  fs::create_directory(place.path() / "lib");
  const Ended ended = place.kivsys({"survey", "lib", "--resume", "nowhere/state"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("kivsys: cannot write to nowhere/state: ")) << ended.error;
}

/// kivsys with its output in a pipe that nobody has read yet, and its messages in the file "error" of its folder.
class Unread {
 public:
  Unread(const fs::path& folder, std::vector<std::string> arguments) {
    int ends[2] = {-1, -1};
    EXPECT_EQ(::pipe(ends), 0);
    arguments.insert(arguments.begin(), KIVSYS_PROGRAM);
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
      argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    child_ = ::fork();
    if (child_ == 0) {
      ::dup2(ends[1], STDOUT_FILENO);
      ::close(ends[0]);
      ::close(ends[1]);
      if (::chdir(folder.c_str()) == 0 && ::dup2(::open("error", O_CREAT | O_WRONLY, 0600), STDERR_FILENO) >= 0) {
        ::execv(KIVSYS_PROGRAM, argv.data());
      }
      ::_exit(127);
    }
    ::close(ends[1]);
    out_ = ends[0];
  }
  Unread(const Unread&) = delete;
  Unread& operator=(const Unread&) = delete;
  ~Unread() { ::close(out_); }

  /// Reads the first bytes, so that the program is known to be at work.
  void readSome() {
    while (read_.size() < 1000 && take(1000) > 0) {
    }
  }
  pid_t process() const { return child_; }
  void interrupt() const { ::kill(child_, SIGINT); }
  /// Reads the rest, and returns the exit status.
  int end() {
    while (take(1U << 16U) > 0) {
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child_, &status, 0), child_);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  const std::string& out() const { return read_; }

 private:
  ssize_t take(std::size_t count) {
    std::string buffer(count, '\0');
    const ssize_t got = ::read(out_, buffer.data(), buffer.size());
    read_ += buffer.substr(0, static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    return got;
  }

  pid_t child_ = -1;
  int out_ = -1;
  std::string read_;
};

TEST_F(SurveyCommand, AfterAnInterruptFinishedLinesAreKeptAndAnotherRunContinues) {
  // More lines than fit into a pipe: the survey cannot be over before somebody reads them.
  constexpr int pieces = 600;
  const std::string folder = "lib/" + std::string(200, 'x');
  for (int i = 0; i < pieces; ++i) {
    const std::string letters = {static_cast<char>('A' + i / 26), static_cast<char>('A' + i % 26)};
    place.write(folder + "/" + letters + "1.MUS", solo);
  }
  Unread run(place.path(), {"survey", "lib", "--csv", "--jobs", "2", "--resume", "state"});
  run.readSome();
  run.interrupt();
  EXPECT_EQ(run.end(), 130);
  const auto lines = std::count(run.out().begin(), run.out().end(), '\n') - 1;
  EXPECT_GT(lines, 0);
  EXPECT_LT(lines, pieces);
  EXPECT_TRUE(run.out().ends_with(",1,1,1,yes,no,0,1,,,no,\n"));
  EXPECT_EQ(place.read("error"), "kivsys: interrupted with " + std::to_string(lines) + " of 600 pieces\n");
  std::string state = place.read("state");
  EXPECT_EQ(std::count(state.begin(), state.end(), '\n'), 1 + lines);
  const std::string all = survey({"--csv", "--resume", "state"});
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), pieces + 1);
  EXPECT_TRUE(all.starts_with(run.out()));
  state = place.read("state");
  EXPECT_EQ(std::count(state.begin(), state.end(), '\n'), 1 + pieces);
}

TEST_F(SurveyCommand, WhileASurveyUsesAStateNoOtherOneDoes) {
  const std::string folder = "lib/" + std::string(200, 'x');
  for (int i = 0; i < 600; ++i) {
    place.write(folder + "/" + std::string{static_cast<char>('A' + i / 26), static_cast<char>('A' + i % 26)} + "1.MUS",
                solo);
  }
  Unread run(place.path(), {"survey", "lib", "--csv", "--resume", "state"});
  run.readSome();
  const Ended second = place.kivsys({"survey", "lib", "--csv", "--resume", "state"});
  EXPECT_EQ(second.status, 4);
  EXPECT_EQ(second.out, "");
  EXPECT_EQ(second.error, "kivsys: another survey (process " + std::to_string(run.process()) + ") is using state\n");
  EXPECT_EQ(run.end(), 0);
  EXPECT_EQ(survey({"--csv", "--resume", "state"}), run.out());
}

}  // namespace
}  // namespace kiv::test
