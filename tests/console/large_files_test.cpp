#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t gibibyte = std::uintmax_t{1} << 30U;

/// How a program ended that ran in a folder, and the memory that it had at most.
struct Measured {
  int status = -1;
  long kilobytes = 0;
  std::string error;
};

/// Files of a gibibyte, which take no space on the disk.
class LargeFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    place.write("A1.MUS", solo);
    place.write("A2.MUS", duo);
  }
  void makeLarge(const std::string& file) const {
    std::ofstream(place.path() / file, std::ios::binary | std::ios::app).flush();
    fs::resize_file(place.path() / file, gibibyte);
  }
  Measured run(std::vector<std::string> arguments) const;

  Workplace place;
  const std::string solo = page("staff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 1\n");
  const std::string duo =
      page("staff 2 at 0 lines 5 instrument 8\nstaff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 2\n");
};

Measured LargeFiles::run(std::vector<std::string> arguments) const {
  arguments.insert(arguments.begin(), KIVSYS_PROGRAM);
  std::vector<char*> argv;
  for (std::string& argument : arguments) {
    argv.push_back(argument.data());
  }
  argv.push_back(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    const bool ready = ::chdir(place.path().c_str()) == 0 &&
                       ::dup2(::open("stdin", O_RDONLY | O_CREAT, 0600), STDIN_FILENO) >= 0 &&
                       ::dup2(::open("stdout", O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO) >= 0 &&
                       ::dup2(::open("stderr", O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO) >= 0;
    if (ready) {
      ::execv(KIVSYS_PROGRAM, argv.data());
    }
    ::_exit(127);
  }
  int status = 0;
  rusage used{};
  EXPECT_EQ(::wait4(child, &status, 0, &used), child);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, used.ru_maxrss, place.read("stderr")};
}

// Sanitizers keep freed memory, 256 MiB of it, and shadows.
constexpr long mostKilobytes = KIVSYS_IS_SANITIZED ? 450'000 : 100'000;

TEST_F(LargeFiles, NoCommandReadsAPageBeyondWhatItCanBe) {
  EXPECT_EQ(run({"convert", "--no-undo", "A1.MUS", "A2.MUS"}).status, 0);
  makeLarge("A2.MUS");
  const std::vector<std::vector<std::string>> commands = {{"analyze", "A1.MUS", "A2.MUS"},
                                                          {"analyze", "--keep-going", "--json", "A1.MUS", "A2.MUS"},
                                                          {"convert", "--dry-run", "A1.MUS", "A2.MUS"},
                                                          {"convert", "--verify", "--json", "A1.MUS", "A2.MUS"},
                                                          {"chart", "A1.MUS", "A2.MUS"},
                                                          {"sort", "A2.MUS"},
                                                          {"draw", "A2.MUS"},
                                                          {"dump", "A2.MUS"},
                                                          {"survey", "."},
                                                          {"verify", "A1.MUS", "A2.MUS", "--result", "WORK0001.MUS"},
                                                          {"build", "A2.MUS", "B1.MUS"},
                                                          {"analyze", "--names", "A2.MUS"}};
  for (const auto& command : commands) {
    const Measured ended = run(command);
    EXPECT_LT(ended.kilobytes, mostKilobytes) << command.front();
    EXPECT_LE(ended.status, 2) << command.front() << ": " << ended.error;
  }
}

TEST_F(LargeFiles, DumpSaysThatNoPageIsSoLarge) {
  makeLarge("X1.MUS");
  const Measured ended = run({"dump", "X1.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "kivsys: X1.MUS has more than 262142 bytes, the limit for a page\n");
}

TEST_F(LargeFiles, BuildSaysThatNoTextIsSoLarge) {
  makeLarge("x.txt");
  const Measured ended = run({"build", "x.txt", "X1.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "kivsys: x.txt has more than 16777216 bytes, the limit for a page text\n");
  EXPECT_EQ(place.read("X1.MUS"), "(no file)");
}

TEST_F(LargeFiles, BuildReadsStandardInputUpToTheLimit) {
  makeLarge("stdin");
  const Measured ended = run({"build", "-", "X1.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "kivsys: - has more than 16777216 bytes, the limit for a page text\n");
  EXPECT_LT(ended.kilobytes, mostKilobytes);
}

TEST_F(LargeFiles, ANamesFileThatIsTooLargeIsRefusedAndKept) {
  makeLarge("names.txt");
  for (const std::string command : {"analyze", "convert", "sort", "chart"}) {
    const Measured ended = run({command, "--names", "names.txt"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_TRUE(ended.error.ends_with("names.txt has more than 16777216 bytes, the limit for a names file\n"))
        << ended.error;
    EXPECT_LT(ended.kilobytes, mostKilobytes) << command;
  }
  EXPECT_EQ(fs::file_size(place.path() / "names.txt"), gibibyte);
}

TEST_F(LargeFiles, ATableOfCorrectionsIsReadUpToItsLimits) {
  constexpr std::size_t mebibyte = std::size_t{1} << 20U;
  const std::vector<std::string> fix = {"fix", "A1.MUS", "--corrections", "t.csv", "-o", "f"};
  makeLarge("t.csv");
  const Measured ended = run(fix);
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, "kivsys: t.csv has more than 16777216 bytes, the limit for a table of corrections\n");
  std::string rows = "file,staff,new_id\n";
  while (rows.size() < 15 * mebibyte) {
    rows += "a,b,c\n";
  }
  for (const std::string& table : {std::string(15 * mebibyte, ','), rows, std::string(15 * mebibyte, '"')}) {
    place.write("t.csv", table);
    const Measured refused = run(fix);
    EXPECT_EQ(refused.status, 2);
    EXPECT_LT(refused.kilobytes, mostKilobytes) << table.substr(0, 40);
  }
}

TEST_F(LargeFiles, AStateOfBracketsIsNotRead) {
  constexpr std::size_t brackets = std::size_t{4} << 20U;
  const std::string head = "{\"kivsys_survey_state\":1,\"x\":" + std::string(brackets, '[') + "\n";
  place.write("state", head);
  const Measured ended = run({"survey", ".", "--resume", "state"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_LT(ended.kilobytes, mostKilobytes);
  EXPECT_EQ(place.read("state"), head);
}

TEST_F(LargeFiles, AStateThatIsTooLargeIsRefusedAndKept) {
  makeLarge("state");
  const Measured ended = run({"survey", ".", "--resume", "state"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "kivsys: state has more than 268435456 bytes, the limit for the state of a survey\n");
  EXPECT_LT(ended.kilobytes, mostKilobytes);
  EXPECT_EQ(fs::file_size(place.path() / "state"), gibibyte);
}

TEST_F(LargeFiles, VerifyFindsFilesThatAreTooLarge) {
  for (const std::string file : {"KivSystem1.TXT", "KivSystem2.TXT", "WORK0002.MUS", "A1.MUS"}) {
    SetUp();
    EXPECT_EQ(run({"convert", "--no-undo", "A1.MUS", "A2.MUS"}).status, 0);
    makeLarge(file);
    const Measured ended = run({"verify", "A1.MUS", "A2.MUS", "--result", "WORK0001.MUS"});
    EXPECT_EQ(ended.status, 1) << file;
    EXPECT_LT(ended.kilobytes, mostKilobytes) << file;
    EXPECT_NE(place.read("stdout").find(file + ": has more than "), std::string::npos) << place.read("stdout");
  }
}

}  // namespace
}  // namespace kiv::test
