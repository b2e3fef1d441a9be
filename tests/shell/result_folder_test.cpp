#include "shell/result_folder.h"

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/panel_in_use.h"

namespace kiv::test {
namespace {

TEST_F(PanelInUse, TheFolderIsChosenWhileThePanelIsHidden) {
  host.addFile("KIVFOLDR.KIV", "* chosen folder\r\nD:\\OUT\r\n");
  host.calls.clear();
  txtFirstResultFile_Click(program);
  EXPECT_EQ(host.calls,
            (std::vector<std::string>{
                "pointer hourglass", "events",
                "shell KIVFOLDR.EXE REMARK=Select output folder,STARTDIR=C:\\KIV,FILE=KIVFOLDR.KIV,DEBUG=NO "
                "(style 1)",
                "events", "pointer normal"}));
  EXPECT_EQ(panel.txtFirstResultFile.text, "D:\\OUT\\WORK0001.MUS");
  EXPECT_TRUE(panel.visible);
}

TEST_F(PanelInUse, WhileTheModuleRunsThePanelIsHidden) {
  host.shellFailure = {{-2147024894, "not found"}};  // the box comes up while the panel is away
  bool visible = true;
  host.whileShown = [&](const Message&) { visible = panel.visible; };
  EXPECT_EQ(endOf(host, [&] { txtFirstResultFile_Click(program); }), 1);
  EXPECT_FALSE(visible);
}

TEST_F(PanelInUse, AnswersOfTheFolderModule) {
  const std::map<std::string, std::string> results = {
      {"* chosen folder\r\nD:\\OUT", "D:\\OUT\\WORK0001.MUS"},
      {"D:\\OUT\\   \r\n", "D:\\OUT\\WORK0001.MUS"},
      {"D:\\\r\n", "D:\\WORK0001.MUS"},
      {"D:\\A\r\nD:\\B\r\n", "D:\\B\\WORK0001.MUS"},
      {"\r\nD:\\A\r\n\r\n* end\r\n", "D:\\A\\WORK0001.MUS"},
      {" D:\\A\r\n", " D:\\A\\WORK0001.MUS"},
  };
  for (const auto& [answer, result] : results) {
    host.addFile("KIVFOLDR.KIV", answer);
    txtFirstResultFile_Click(program);
    EXPECT_EQ(panel.txtFirstResultFile.text, result) << answer;
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PanelInUse, WithoutAnAnswerTheNameStays) {
  panel.txtFirstResultFile.text = "C:\\M\\WORK0001.MUS";
  for (const std::string answer : {"* only comments\r\n", "", "D:\\A\r\n   \r\n"}) {
    host.messages.clear();
    host.addFile("KIVFOLDR.KIV", answer);
    txtFirstResultFile_Click(program);
    EXPECT_EQ(host.messages, std::vector{information("Failed to open output folder")}) << answer;
    EXPECT_EQ(panel.txtFirstResultFile.text, "C:\\M\\WORK0001.MUS");
  }
  host.messages.clear();
  host.deleteFile("KIVFOLDR.KIV");
  txtFirstResultFile_Click(program);
  EXPECT_EQ(host.messages, std::vector{information("Failed to open output folder")}) << "no answer file";
}

TEST_F(PanelInUse, AnOldAnswerIsReadAgain) {
  host.addFile("KIVFOLDR.KIV", "D:\\OLD\r\n");
  txtFirstResultFile_Click(program);
  EXPECT_EQ(panel.txtFirstResultFile.text, "D:\\OLD\\WORK0001.MUS");
  EXPECT_TRUE(host.hasFile("KIVFOLDR.KIV"));
}

TEST_F(PanelInUse, WithoutTheFolderModuleTheNameStays) {
  host.deleteFile("KIVFOLDR.EXE");
  panel.txtFirstResultFile.text = "C:\\M\\WORK0001.MUS";
  host.calls.clear();
  txtFirstResultFile_Click(program);
  EXPECT_EQ(host.messages,
            std::vector{
                information("Module KIVFOLDR.EXE not properly installed. Name of default folder cannot be modified.")});
  EXPECT_EQ(panel.txtFirstResultFile.text, "C:\\M\\WORK0001.MUS");
  EXPECT_TRUE(host.calls.empty());
}

}  // namespace
}  // namespace kiv::test
