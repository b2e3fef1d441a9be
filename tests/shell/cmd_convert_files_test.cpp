#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/convert_fixture.h"

namespace kiv::test {
namespace {

// --- the reads ---

TEST_F(Convert, EveryFileIsReadOnceHoweverManyStavesAndSystemsItGives) {
  report = "";
  for (int system = 1; system <= 5; ++system) {
    report += record(system, 101, 2, 2, "X1.MUS") + record(system, 102, 1, 1, "X1.MUS");
  }
  convert();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.timesRead("C:\\M\\X1.MUS"), 1);
  EXPECT_EQ(host.timesRead("KivSystem2.TXT"), 1);
}

TEST_F(Convert, AFileIsDroppedAfterItsLastSystem) {
  report = record(1, 102, 1, 1, "X2.MUS") + record(2, 102, 1, 1, "X1.MUS");
  convert();
  convert();
  EXPECT_EQ(host.timesRead("C:\\M\\X2.MUS"), 2) << "a run of its own";
}

TEST_F(Convert, AResultThatReplacesAnInputIsWhatLaterSystemsRead) {
  program.panel.txtFirstResultFile.text = "c:\\m\\x0001.MUS";
  host.addFile("C:\\M\\X0001.MUS", page(duo));
  report = record(1, 101, 2, 2, "X0001.MUS") + record(1, 102, 1, 1, "X0001.MUS") + record(2, 102, 1, 1, "X0001.MUS");
  convert();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_NE(result("C:\\M\\X0002.MUS").find("item 10 1 at -4 p5 102 p6 0.7\nitem 10 1 at -4 p5 102 p6 0.7\n"),
            std::string::npos)
      << "it shows the number that the first result shows, and its own:\n"
      << result("C:\\M\\X0002.MUS");
}

/// Files of which one folder has two names.
class LinkedFolder : public FakeHost {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& name) override { return FakeHost::openInput(own(name)); }
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override { return FakeHost::openOutput(own(name)); }
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override {
    return FakeHost::replaceFile(own(name), bytes);
  }

 private:
  static std::string own(const std::string& name) {
    const std::string link = "D:\\LINK\\";
    return name.starts_with(link) ? "C:\\M\\" + name.substr(link.size()) : name;
  }
};

TEST_F(Convert, AResultThatReplacesAnInputUnderAnotherNameIsReadToo) {
  report = record(1, 101, 2, 2, "X0001.MUS") + record(1, 102, 1, 1, "X0001.MUS") + record(2, 102, 1, 1, "X0001.MUS");
  const auto resultsFrom = [this](const std::string& firstResult) {
    LinkedFolder linked;
    KivSystem another{linked};
    another.panel.txtFirstResultFile.text = firstResult;
    linked.addFile("C:\\M\\X0001.MUS", page(duo));
    linked.addFile("KivSystem2.TXT", report);
    EXPECT_EQ(endOf(linked, [&] { cmdConvert_Click(another); }), std::nullopt);
    EXPECT_EQ(linked.timesRead("C:\\M\\X0001.MUS"), 3) << "for each system, and to see whether it is there";
    return std::pair(linked.file("C:\\M\\X0001.MUS"), linked.file("C:\\M\\X0002.MUS"));
  };
  EXPECT_EQ(resultsFrom("D:\\LINK\\X0001.MUS"), resultsFrom("C:\\M\\X0001.MUS"));
}

// --- existing files ---

TEST_F(Convert, WithOverwriteTheUserIsNotAsked) {
  host.addFile(result1, "old");
  convert();
  EXPECT_EQ(host.messages.size(), 1U);
  EXPECT_NE(host.file(result1), "old");
}

TEST_F(Convert, WithoutOverwriteTheUserIsAskedForEveryExistingFile) {
  program.panel.chkOverwrite.checked = false;
  host.addFile(result2, "old");
  host.answers = {Answer::yes};
  convert();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages.front(),
            (Message{Icon::exclamation, "File exists: C:\\OUT\\WORK0002.MUS\r\n\r\nOverwrite?", Buttons::yesNo}));
  EXPECT_EQ(host.messages.size(), 2U);
  EXPECT_NE(host.file(result2), "old");
}

TEST_F(Convert, TheAnswerNoEndsTheProgramAndEarlierResultsStay) {
  program.panel.chkOverwrite.checked = false;
  host.addFile(result2, "old");
  host.answers = {Answer::no};
  convert();
  expectEnd("Abnormal termination forced by user.");
  EXPECT_TRUE(host.hasFile(result1));
  EXPECT_EQ(host.file(result2), "old");
}

}  // namespace
}  // namespace kiv::test
