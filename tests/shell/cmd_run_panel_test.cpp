#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/analyze_fixture.h"

namespace kiv::test {
namespace {

const std::string interactive = "CALLEDBY=KIV,FUNCTION=MAIN";

TEST_F(Analyze, FirstResultFileIsInTheFolderOfTheInput) {
  addPage("X1.MUS", bass);
  run();
  EXPECT_EQ(program.panel.txtFirstResultFile.text, "C:\\M\\WORK0001.MUS");
  EXPECT_EQ(program.panel.txtFirstResultFileTag, "C:\\M\\");
}

TEST_F(Analyze, WaitLabelAndHourglassFrameTheReading) {
  addPage("X1.MUS", "staff 1 at 0\n");
  host.whileShown = [this](const Message&) {
    EXPECT_TRUE(program.panel.lblWait.visible);
    EXPECT_EQ(program.panel.lblWait.text, "Wait for analysis to finish");
  };
  run();
  EXPECT_EQ(host.messages.size(), 1U);
  EXPECT_FALSE(program.panel.lblWait.visible);
  ASSERT_FALSE(host.calls.empty());
  EXPECT_EQ(host.calls.front(), "pointer hourglass");
  EXPECT_EQ(host.calls.back(), "pointer normal");
}

/// A host that records when texts are opened and closed, each with what the wait label shows then.
class AttentiveHost : public FakeHost {
 public:
  const Control* label = nullptr;

  std::unique_ptr<OutputFile> openOutput(const std::string& name) override {
    record("open " + name);
    return std::make_unique<WatchedOutput>(FakeHost::openOutput(name), [this, name] { record("close " + name); });
  }
  void processEvents() override { record("events"); }
  void setPointer(Pointer pointer) override {
    record(pointer == Pointer::hourglass ? "pointer hourglass" : "pointer normal");
  }
  std::int32_t runProcess(const std::string& commandLine, ShowState /*show*/) override {
    record("run " + commandLine + (hasFile("KivSystem1.TXT") ? ", with a verdict" : ", without verdict"));
    return 0;
  }

 private:
  class WatchedOutput : public OutputFile {
   public:
    WatchedOutput(std::unique_ptr<OutputFile> file, std::function<void()> closed)
        : file_(std::move(file)), closed_(std::move(closed)) {}
    WatchedOutput(const WatchedOutput&) = delete;
    WatchedOutput& operator=(const WatchedOutput&) = delete;
    ~WatchedOutput() override { closed_(); }
    std::optional<std::string> write(std::string_view bytes) override { return file_->write(bytes); }

   private:
    std::unique_ptr<OutputFile> file_;
    std::function<void()> closed_;
  };

  void record(const std::string& call) { calls.push_back(label->visible ? call + " [" + label->text + "]" : call); }
};

TEST_F(Analyze, BeginsWithTheLabelAndEndsWithTheVerdict) {
  addPage("X1.MUS", bass);
  AttentiveHost attentive;
  KivSystem another{attentive};
  attentive.label = &another.panel.lblWait;
  attentive.addFile("C:\\M\\X1.MUS", page(bass));
  attentive.addFile("C:\\N.TXT", namesFile);
  another.settings.namesFile = "C:\\N.TXT";
  another.panel.chkDebug.checked = true;
  EXPECT_EQ(endOf(attentive, [&] { cmdRun_Click(another); }), std::nullopt);
  const std::string wait = " [Wait for analysis to finish]";
  EXPECT_EQ(attentive.calls, (std::vector<std::string>{
                                 "pointer hourglass", "events" + wait, "open KivSystem2.TXT" + wait,
                                 "close KivSystem2.TXT" + wait, "run Notepad KivSystem2.TXT, without verdict" + wait,
                                 "pointer normal" + wait, "open KivSystem1.TXT", "close KivSystem1.TXT"}));
}

TEST_F(Analyze, TraceShowsTheReport) {
  addPage("X1.MUS", bass);
  program.panel.chkDebug.checked = true;
  run();
  EXPECT_TRUE(called("run Notepad KivSystem2.TXT"));
}

TEST_F(Analyze, WithoutTraceTheReportIsNotShown) {
  addPage("X1.MUS", bass);
  run();
  EXPECT_FALSE(called("run Notepad KivSystem2.TXT"));
}

TEST_F(Analyze, ProgressGoesFromNoneToAllPages) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", bass);
  run();
  EXPECT_EQ(host.progress, (std::vector<std::string>{"0/2 pages", "1/2 pages", "2/2 pages"}));
}

TEST_F(Analyze, EmptySelectionEndsASiblingsCall) {
  run();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("No input files: C:\\N.TXT")});
}

TEST_F(Analyze, EmptySelectionLeavesThePanelAsItWas) {
  program.panel.txtFirstResultFile.text = "D:\\OUT\\WORK0001.MUS";
  program.panel.cmdConvert.enabled = true;
  const Panel before = program.panel;
  run(interactive);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages, std::vector{critical("No input files: C:\\N.TXT")});
  EXPECT_EQ(program.panel, before);
  EXPECT_EQ(host.calls.back(), "pointer normal");
}

TEST_F(Analyze, InputThatQualifiesEndsThePanelsProgram) {
  addPage("X1.MUS", bass);
  run(interactive);
  EXPECT_EQ(end, 0);
  EXPECT_EQ(host.messages,
            std::vector{information("Input qualifies for conversion to one file per system.\r\n"
                                    "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.")});
  EXPECT_FALSE(program.panel.cmdConvert.enabled);
}

TEST_F(Analyze, InputThatDoesNotQualifyEnablesConvert) {
  addPage("X1.MUS", fluteAndBass);
  addPage("X2.MUS", bass);
  run(interactive);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages,
            std::vector{information("Result of the Analysis.\r\nNumber of files processed: 2\r\n"
                                    "Number of staves (instruments) per system: 2\r\n\r\n"
                                    "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n\r\nInput does NOT qualify for conversion\r\n"
                                    "Use Convert button to create consistent input for KivScore2XML or KivSpli6.")});
  EXPECT_TRUE(program.panel.cmdConvert.enabled);
}

TEST_F(Analyze, ConsistentMultifilePagesNeedAConversionToo) {
  addPage("X1A.MUS", bass);
  addPage("X1B.MUS", "staff 1 at 0 instrument 103\nbarline 1 at 0\n");
  run(interactive);
  EXPECT_NE(host.messages.at(0).text.find("CONSISTENCY=YES\r\nMULTIFILE=YES"), std::string::npos);
  EXPECT_TRUE(program.panel.cmdConvert.enabled);
}

TEST_F(Analyze, ClosingMessagesBelongToThePanelOnly) {
  addPage("X1.MUS", bass);
  run("CALLEDBY=KIV,FUNCTION=MAIN,X");
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(Analyze, VerdictThatIsGoneBeforeItIsReadEndsTheProgram) {
  addPage("X1.MUS", fluteAndBass);
  // The verdict can be written but is not there when it is read.
  class VanishingVerdict : public FakeHost {
   public:
    std::unique_ptr<InputFile> openInput(const std::string& name) override {
      return name == "KivSystem1.TXT" ? nullptr : FakeHost::openInput(name);
    }
  };
  VanishingVerdict other;
  other.addFile("C:\\N.TXT", namesFile);
  other.addFile("C:\\M\\X1.MUS", page(fluteAndBass));
  KivSystem panel(other);
  panel.settings.commandLine = interactive;
  panel.settings.namesFile = "C:\\N.TXT";
  EXPECT_EQ(endOf(other, [&] { cmdRun_Click(panel); }), 1);
  EXPECT_EQ(other.messages, std::vector{critical("Failed to open KivSystem1.TXT for input.")});
}

}  // namespace
}  // namespace kiv::test
