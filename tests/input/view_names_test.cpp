#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "input/names_table.h"
#include "tests/input/names_host.h"

namespace kiv::test {
namespace {

using Texts = std::vector<std::string>;

TEST(ViewNames, ShowsTheNamesFileAndEndsTheProgram) {
  NamesHost host;
  host.addFile(NamesHost::namesFile, "* none\r\n");
  EXPECT_EQ(endOf(host, [&] { cmdViewNames_Click(host, NamesHost::namesFile); }), 0);
  EXPECT_EQ(host.calls, Texts{"run Notepad C:\\KIV\\names.txt"});
  EXPECT_EQ(host.events, (Texts{"open", "close", "view"}));
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(host.hasFile(NamesHost::namesFile));
}

TEST(ViewNames, EndsTheProgramAlsoWhenNotepadDoesNotStart) {
  NamesHost host;
  host.addFile(NamesHost::namesFile, "");
  host.exitCode = -1;
  EXPECT_EQ(endOf(host, [&] { cmdViewNames_Click(host, NamesHost::namesFile); }), 0);
  EXPECT_EQ(host.messages, std::vector{information("Some problem calling Notepad C:\\KIV\\names.txt")});
}

TEST(ViewNames, AMissingNamesFileIsFatal) {
  NamesHost host;
  EXPECT_EQ(endOf(host, [&] { cmdViewNames_Click(host, NamesHost::namesFile); }), 1);
  EXPECT_EQ(host.messages,
            std::vector{critical("C:\\KIV\\names.txt creation failed. Programming error. Hit OK to abort")});
  EXPECT_TRUE(host.calls.empty());
}

TEST(ViewNames, ANamesFileOnANetworkPathIsFatal) {
  NamesHost host;
  host.addFile("\\\\SERVER\\S\\N.TXT", "");
  EXPECT_EQ(endOf(host, [&] { cmdViewNames_Click(host, "\\\\SERVER\\S\\N.TXT"); }), 1);
  EXPECT_EQ(host.messages,
            std::vector{critical("\\\\SERVER\\S\\N.TXT creation failed. Programming error. Hit OK to abort")});
}

}  // namespace
}  // namespace kiv::test
