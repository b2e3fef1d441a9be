#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/faults/program/outcome.h"
#include "tests/faults/program/pages.h"
#include "tests/faults/program/working_folder.h"

namespace kiv::test {
namespace {

constexpr int pageCount = 20;

std::string pageName(int number) {
  return "X0" + std::to_string(10 + number) + ".MUS";
}

/// What an analysis of many pages asks the system about each of them. A call more is a call for each page of a group.
class PageCalls : public testing::Test {
 protected:
  PageCalls() {
    Files files{{"run/names.txt", ""}};
    const std::string page = work.page(duo);
    for (int number = 1; number <= pageCount; ++number) {
      files["m/" + pageName(number)] = page;
      files["run/names.txt"] += withBackslashes((work.path() / "m" / pageName(number)).string()) + " 1\r\n";
    }
    work.reset(files);
  }

  /// How many calls of this name a run makes for the page in the middle. Those that find nothing count, too.
  std::ptrdiff_t calls(const std::vector<std::string>& arguments, const std::string& among, const std::string& name) {
    const Ended ended = work.kivsys(arguments, {{"AMONG", among}, {"LOG", (work.path() / "log").string()}});
    EXPECT_EQ(ended.status, 0) << ended.error;
    const std::vector<Call> all = callsIn(work.files().at("log"));
    return std::count_if(all.begin(), all.end(), [&](const Call& call) {
      return call.name == name && call.file.ends_with(pageName(pageCount / 2));
    });
  }
  std::ptrdiff_t all(const std::vector<std::string>& arguments, const std::string& among, const std::string& name) {
    const Ended ended = work.kivsys(arguments, {{"AMONG", among}, {"LOG", (work.path() / "log").string()}});
    const std::vector<Call> made = callsIn(work.files().at("log"));
    return std::count_if(made.begin(), made.end(), [&](const Call& call) { return call.name == name; });
  }
  static std::string withBackslashes(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
  }

  WorkingFolder work{{}};
  const std::vector<std::string> ofList{"analyze", "--folder", "run", "--names", "run/names.txt"};
  const std::vector<std::string> ofFolder{"analyze", "--folder", "run", "m"};
};

TEST_F(PageCalls, AListedPageIsOpenedToFindItAndToReadIt) {
  EXPECT_EQ(calls(ofList, "files", "open"), 2);
}

TEST_F(PageCalls, APageThatFitsIntoTheBufferIsReadInOneCall) {
  EXPECT_EQ(calls(ofList, "files", "read"), 1);
}

TEST_F(PageCalls, AListedPageIsAskedForOnceMoreWhenTheFolderIsLocked) {
  EXPECT_EQ(calls(ofList, "status", "stat"), 1);
  EXPECT_EQ(calls(ofList, "status", "lstat"), 1) << "no file has the whole name, with its backslashes";
}

TEST_F(PageCalls, APageOfAFolderIsAskedForOnceMoreForItsKindAndInTheList) {
  EXPECT_EQ(calls(ofFolder, "files", "open"), 2);
  EXPECT_EQ(calls(ofFolder, "status", "stat"), 3);
  EXPECT_EQ(calls(ofFolder, "status", "lstat"), 0);
}

TEST_F(PageCalls, TheCurrentFolderIsNotAskedForByEachPage) {
  EXPECT_LT(all(ofList, "folders", "getcwd"), pageCount);
  EXPECT_LT(all(ofFolder, "folders", "getcwd"), pageCount);
}

}  // namespace
}  // namespace kiv::test
