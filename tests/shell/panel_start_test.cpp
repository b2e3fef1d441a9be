#include <algorithm>

#include <gtest/gtest.h>

#include "shell/load_globals.h"
#include "shell/position_panel.h"
#include "shell/start_up.h"
#include "shell/version.h"
#include "tests/platform/scripted_input.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string interactive = "CALLEDBY=KIV,FUNCTION=MAIN";

/// A start of the program up to the shown panel.
class PanelStart : public ::testing::Test {
 protected:
  void SetUp() override {
    host.addFile("C:\\KIV\\KIVPROJ.PRO", "MusDirectory=D:\\MUSIC\r\nNamesFile=C:\\KIV\\NAMES.TXT\r\n");
    program.panel.place.width = 8700;
    program.panel.screenWidth = 28800;
    program.panel.screenHeight = 16200;
  }
  void start(const std::string& commandLine = interactive) {
    end = endOf(host, [&] { Form_Load(program, commandLine); });
  }

  FakeHost host;
  KivSystem program{host};
  std::optional<int> end;
};

TEST_F(PanelStart, ThePanelsCommandLineShowsThePanel) {
  start();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
  const Settings& settings = program.settings;
  EXPECT_EQ(settings.currentFolder, "C:\\KIV");
  EXPECT_EQ(settings.projectFile, "C:\\KIV\\KIVPROJ.PRO");
  EXPECT_EQ(settings.musFolder, "D:\\MUSIC");
  EXPECT_EQ(settings.namesFile, "C:\\KIV\\NAMES.TXT");
  EXPECT_EQ(settings.namesExe, "C:\\KIV\\KIVNAMES.EXE");
  EXPECT_EQ(settings.oleExe, "C:\\KIV\\KIVOLE.EXE");
  EXPECT_EQ(settings.fileType, "MUS");
  EXPECT_FALSE(settings.allowZeroInstrId);
  EXPECT_FALSE(program.panel.chkDebug.visible);
}

TEST_F(PanelStart, ZeroIdentifiersAreNotAllowedToBeginWith) {
  program.settings.allowZeroInstrId = true;
  start();
  EXPECT_FALSE(program.settings.allowZeroInstrId);
}

TEST_F(PanelStart, TitleShowsTheVersion) {
  start();
  EXPECT_EQ(program.panel.title, "KivSystem - " + versionText(version::major, version::minor, version::revision));
}

TEST_F(PanelStart, OldResultsAreDeleted) {
  host.addFile("KivSystem1.TXT", "old");
  host.addFile("KivSystem2.TXT", "old");
  start();
  EXPECT_FALSE(host.hasFile("KivSystem1.TXT"));
  EXPECT_FALSE(host.hasFile("KivSystem2.TXT"));
}

TEST_F(PanelStart, TheProfileIsReadBeforeAnythingIsDeleted) {
  host.profile = {{"OS", "XP"}, {"TOP", "1"}, {"LEFT", "2"}};
  start("X");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.calls, (std::vector<std::string>{"profile OS", "profile TOP", "profile LEFT", "delete KivSystem1.TXT",
                                                  "delete KivSystem2.TXT"}));
  EXPECT_EQ(program.settings.osName, "XP");
  EXPECT_EQ(program.panel.place, (WindowPlace{2, 1, 8700, 6660}));
}

/// A host that records accesses to files and the current folder too.
class AttentiveHost : public FakeHost {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& name) override {
    calls.push_back("open " + name);
    return FakeHost::openInput(name);
  }
  std::string currentFolder() override {
    calls.emplace_back("current folder");
    return FakeHost::currentFolder();
  }
};

TEST_F(PanelStart, StepsFollowInTheirOrder) {
  AttentiveHost attentive;
  KivSystem another{attentive};
  another.panel.txtFirstResultFile.text = "left over";
  attentive.addFile("C:\\KIV\\KIVPROJ.PRO", "NamesFile=C:\\KIV\\NAMES.TXT\r\n");
  EXPECT_EQ(endOf(attentive, [&] { Form_Load(another, interactive); }), std::nullopt);
  EXPECT_EQ(attentive.calls,
            (std::vector<std::string>{"profile OS", "profile TOP", "profile LEFT", "delete KivSystem1.TXT",
                                      "delete KivSystem2.TXT", "open KIVXREF5.ASM", "profile TOP", "profile LEFT",
                                      "current folder", "open C:\\KIV\\KIVPROJ.PRO", "open C:\\KIV\\NAMES.TXT"}));
  EXPECT_EQ(another.panel.txtFirstResultFile.text, "");
}

TEST_F(PanelStart, AnOldReportThatCannotBeDeletedIsNoReasonToStop) {
  host.addFile("KivSystem2.TXT", "old");
  host.unwritable = {"KivSystem2.TXT"};
  start();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(host.file("KivSystem2.TXT"), "old");
}

TEST_F(PanelStart, ADevelopersFolderAcceptsAnyOtherCommandLine) {
  host.addFile("KIVXREF5.ASM", "");
  for (const std::string line : {"", "X", "calledby=kiv,function=main"}) {
    KivSystem another{host};
    EXPECT_EQ(endOf(host, [&] { Form_Load(another, line); }), std::nullopt) << line;
    EXPECT_EQ(another.settings.commandLine, interactive);
    EXPECT_TRUE(another.panel.chkDebug.visible);
    EXPECT_EQ(another.settings.namesFile, "C:\\KIV\\NAMES.TXT");
  }
}

TEST_F(PanelStart, WithoutSettingsFileTheProgramEnds) {
  host.deleteFile("C:\\KIV\\KIVPROJ.PRO");
  start();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("File does not open: C:\\KIV\\KIVPROJ.PRO")});
}

TEST_F(PanelStart, TheNameOfTheFirstResultIsNotKnownYet) {
  program.panel.txtFirstResultFile.text = "left over";
  start();
  EXPECT_EQ(program.panel.txtFirstResultFile.text, "");
}

TEST_F(PanelStart, ButtonsFollowTheNamesFile) {
  start();
  EXPECT_FALSE(program.panel.cmdRun.enabled);
  EXPECT_FALSE(program.panel.cmdViewNames.enabled);
  host.addFile("D:\\MUSIC\\X1.MUS", page("staff 1 at 0\n"));
  host.addFile("C:\\KIV\\NAMES.TXT", "D:\\MUSIC\\X1.MUS 1\r\n");
  start();
  EXPECT_TRUE(program.panel.cmdRun.enabled);
  EXPECT_TRUE(program.panel.cmdViewNames.enabled);
}

// --- the height and position of the window, in twips ---

TEST_F(PanelStart, FramesAreTallerOnLaterSystems) {
  host.profile["OS"] = "XP";
  start();
  EXPECT_EQ(program.panel.place.height, 6660);
  for (const std::string name : {"", "xp", "XP ", "10"}) {
    host.profile["OS"] = name;
    start();
    EXPECT_EQ(program.panel.place.height, 6860) << name;
  }
}

TEST_F(PanelStart, TheProfilePlacesTheWindow) {
  host.profile = {{"TOP", "1000"}, {"LEFT", "2000"}};
  start();
  EXPECT_EQ(program.panel.place.left, 2000);
  EXPECT_EQ(program.panel.place.top, 1000);
}

TEST_F(PanelStart, APositionIsReadAsFarAsItIsANumber) {
  host.profile = {{"TOP", " 12.5 twips"}, {"LEFT", "far"}};
  start();
  EXPECT_EQ(program.panel.place.left, 0);
  EXPECT_EQ(program.panel.place.top, 12.5);
}

TEST_F(PanelStart, HalfAPositionCentersTheWindow) {
  for (const auto& profile : std::vector<std::map<std::string, std::string>>{{{"TOP", "5"}}, {{"LEFT", "5"}}, {}}) {
    host.profile = profile;
    start();
    EXPECT_EQ(program.panel.place.left, (28800 - 8700) / 2);
    EXPECT_EQ(program.panel.place.top, (16200 - 6860) / 2);
  }
}

TEST_F(PanelStart, CenteringDropsTheHalfTwipTowardsTheEdge) {
  program.panel.screenWidth = 8801;
  program.panel.screenHeight = 6863.4;
  start();
  EXPECT_EQ(program.panel.place.left, 50);
  EXPECT_EQ(program.panel.place.top, 1);
}

TEST_F(PanelStart, AWindowWiderThanTheScreenStartsLeftOfIt) {
  program.panel.screenWidth = 8699;
  start();
  EXPECT_EQ(program.panel.place.left, 0);
  program.panel.screenWidth = 8501;
  start();
  EXPECT_EQ(program.panel.place.left, -99);
}

// --- the settings file ---

class ProjectSettings : public ::testing::Test {
 protected:
  Settings settingsIn(const std::string& content) {
    FakeHost host;
    Settings settings;
    settings.projectFile = "C:\\KIV\\KIVPROJ.PRO";
    settings.musFolder = "before";
    settings.namesFile = "before";
    host.addFile(settings.projectFile, content);
    loadGlobals(host, settings);
    EXPECT_TRUE(host.messages.empty());
    return settings;
  }
};

TEST_F(ProjectSettings, KeysAreComparedExactlyAndValuesUsedAsTheyStand) {
  EXPECT_EQ(settingsIn("NamesFile=X=Y\r\n").namesFile, "X=Y");
  EXPECT_EQ(settingsIn("NamesFile= X \r\n").namesFile, " X ");
  EXPECT_EQ(settingsIn("MusDirectory=\r\n").musFolder, "");
  EXPECT_EQ(settingsIn("MusDirectory=D:\\M").musFolder, "D:\\M") << "without a line end";
}

TEST_F(ProjectSettings, OtherLinesAreIgnored) {
  for (const std::string line : {"NamesFile = X", "*NamesFile=X", "namesfile=X", "NamesFile", " NamesFile=X", "Names=X",
                                 "NamesFileX=Y", "=X", ""}) {
    const Settings settings = settingsIn(line + "\r\n");
    EXPECT_EQ(settings.namesFile, "before") << line;
    EXPECT_EQ(settings.musFolder, "before") << line;
  }
}

TEST_F(ProjectSettings, TheLastOccurrenceCounts) {
  EXPECT_EQ(settingsIn("NamesFile=1\r\nMusDirectory=M\nNamesFile=2\r").namesFile, "2");
}

TEST(ProjectSettingsFile, AnIoErrorEndsTheProgram) {
  class FailingDisk : public FakeHost {
   public:
    std::unique_ptr<InputFile> openInput(const std::string& /*name*/) override {
      return std::make_unique<ScriptedInput>(
          std::deque<ScriptedInput::Portion>{"MusDirectory=D:\\MUSIC\r\nNamesFile=C:\\KIV\\NA", std::nullopt});
    }
  };
  FailingDisk host;
  Settings settings;
  settings.projectFile = "C:\\KIV\\KIVPROJ.PRO";
  EXPECT_EQ(endOf(host, [&] { loadGlobals(host, settings); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Device I/O error\r\nC:\\KIV\\KIVPROJ.PRO")});
}

}  // namespace
}  // namespace kiv::test
