#include <map>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "shell/start_up.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"

namespace kiv::test {
namespace {

/// The files of another disk, of which one has other bytes at a single opening.
class FilesThatChange : public Files {
 public:
  explicit FilesThatChange(Files& below) : below_(below) {}

  /// At this opening of the file, counted from 1, it holds these bytes.
  void change(const std::string& name, int opening, std::string bytes) {
    name_ = name;
    opening_ = opening;
    other_.addFile(name, std::move(bytes));
  }
  int openings(const std::string& name) { return openings_[name]; }

  std::unique_ptr<InputFile> openInput(const std::string& name) override {
    const bool isOther = ++openings_[name] == opening_ && name == name_;
    return isOther ? other_.openInput(name) : below_.openInput(name);
  }
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override { return below_.openOutput(name); }
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override {
    return below_.replaceFile(name, bytes);
  }
  bool deleteFile(const std::string& name) override { return below_.deleteFile(name); }
  std::vector<FolderEntry> listFolder(const std::string& folder) override { return below_.listFolder(folder); }
  std::string currentFolder() override { return below_.currentFolder(); }
  std::optional<std::string> shortName(const std::string& path) override { return below_.shortName(path); }

 private:
  Files& below_;
  FakeHost other_;
  std::string name_;
  int opening_ = 0;
  std::map<std::string, int> openings_;
};

/// A proof during which a file changes.
class ChangedFiles : public ::testing::Test {
 protected:
  std::string findings() {
    std::string lines;
    for (const proof::Finding& finding : proof::verify(files, group.host, "C:\\N.TXT", group.conversion).findings) {
      lines += finding.file + " " + finding.what + "\n";
    }
    return lines;
  }

  /// Makes a file the last input, and a report of the pages with these bytes in it.
  void addInput(const std::string& name, const std::string& bytes) {
    const std::string before = group.host.file(name);
    group.host.addFile("C:\\N.TXT", group.host.file("C:\\N.TXT") + name + " 1\r\n");
    group.host.addFile(name, bytes);
    KivSystem program(group.host);
    EXPECT_EQ(endOf(group.host, [&] { analyze(program, "C:\\N.TXT", false); }), std::nullopt)
        << group.host.messages.back().text;
    group.host.addFile(name, before);
  }

  const std::string solo = page("staff 1 at 0 instrument 101\nnote 1 at 5\nbarline 1 at 0 spans 1\n");
  ConvertedGroup group{
      {{"DUO001.MUS",
        page("staff 2 at 0 instrument 101\nnote 2 at 5\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n")},
       {"DUO002.MUS", solo}}};
  FilesThatChange files{group.host};
  const std::string input = "C:\\M\\DUO002.MUS";
  const std::string result = ConvertedGroup::resultName(2);
};

TEST_F(ChangedFiles, AreNoneAsLongAsTheyHoldTheSame) {
  EXPECT_EQ(findings(), "");
  EXPECT_EQ(files.openings(input), 3) << "first it is looked for";
  EXPECT_EQ(files.openings(result), 2);
}

TEST_F(ChangedFiles, AnInputThatChangesAfterItsAnalysisIsNamed) {
  files.change(input, 3, solo + "x");
  EXPECT_EQ(findings(), input + " has changed while it was compared\n");
}

TEST_F(ChangedFiles, AResultThatChangesAfterItWasReadIsNamed) {
  files.change(result, 2, group.result(2) + "x");
  EXPECT_EQ(findings(), result + " has changed while it was compared\n");
}

TEST_F(ChangedFiles, AFileThatIsEmptyNowHasChanged) {
  files.change(result, 2, "");
  EXPECT_EQ(findings(), result + " has changed while it was compared\n");
}

TEST_F(ChangedFiles, AResultThatIsAnInputMustNotChangeEither) {
  const std::string both = "C:\\M\\WORK0002.MUS";
  const std::string noStaves = page("note 1 at 5\n");
  group.host.addFile("C:\\M\\WORK0001.MUS", group.result(1));
  group.host.addFile(both, group.result(2));
  group.conversion.firstResultFile = "C:\\M\\WORK0001.MUS";
  addInput(both, noStaves);
  files.change(both, 2, noStaves);
  EXPECT_EQ(findings(), both + " has changed while it was compared\n") << "no system asks for it again";
}

}  // namespace
}  // namespace kiv::test
