#include "shell/conversion_run.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "messages/conversion_messages.h"
#include "mus/reader.h"
#include "shell/frm_kivsystem.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string result1 = "C:\\OUT\\WORK0001.MUS";
const std::string result2 = "C:\\OUT\\WORK0002.MUS";

/// Conversions of two systems of one staff, with and without the panel.
class ConversionRun : public ::testing::Test {
 protected:
  ConversionRun() {
    host.addFile("C:\\M\\X1.MUS", page("staff 1 at 0 lines 5 instrument 102\nnote 1 at 15\nbarline 1 at 50 spans 1\n"));
    std::string report;
    for (const char* system : {"1", "2"}) {
      report += std::string("SYSTEM=") + system + ",INSTRID=102,NEWSTAFF=1,STAVESUP=0,STAFF=1,FILE=C:\\M\\X1.MUS\r\n";
    }
    host.addFile("KivSystem2.TXT", report);
  }
  std::size_t questions() const {
    std::size_t count = 0;
    for (const Message& message : host.messages) {
      count += message.buttons == Buttons::yesNo ? 1U : 0U;
    }
    return count;
  }
  bool showsNumbers(const std::string& result) {
    ItemTable table;
    readFile(host, result, table);
    return asText(table).find("item 10 ") != std::string::npos;
  }

  FakeHost host;
  KivSystem program{host};
};

// --- without the panel ---

TEST_F(ConversionRun, WritesTheResultsWithoutThePanel) {
  program.panel.txtFirstResultFile.text = "C:\\ELSEWHERE\\WORK0001.MUS";
  const Panel before = program.panel;
  EXPECT_EQ(convertGroup(program, {.firstResultFile = result1}), messages::created(2, result1, result2));
  EXPECT_TRUE(host.hasFile(result1));
  EXPECT_TRUE(host.hasFile(result2));
  EXPECT_FALSE(host.hasFile("C:\\ELSEWHERE\\WORK0001.MUS"));
  EXPECT_EQ(program.panel, before);
  EXPECT_EQ(program.musFileName, result2);
  EXPECT_TRUE(host.messages.empty()) << "the caller shows what was created";
  EXPECT_TRUE(host.calls.empty()) << "the wait label and the pointer are the panel's";
}

TEST_F(ConversionRun, AsksBeforeOverwritingOnRequest) {
  host.addFile(result2, "old");
  convertGroup(program, {.firstResultFile = result1, .overwrite = false});
  EXPECT_EQ(questions(), 1U);
  convertGroup(program, {.firstResultFile = result1, .overwrite = true});
  EXPECT_EQ(questions(), 1U);
}

TEST_F(ConversionRun, ShowsInstrumentNumbersOnRequest) {
  for (const bool shown : {true, false}) {
    convertGroup(program, {.firstResultFile = result1, .showInstrumentNumbers = shown});
    EXPECT_EQ(showsNumbers(result1), shown);
    EXPECT_EQ(showsNumbers(result2), shown);
  }
}

// --- the observer ---

/// Notes what it is given.
class NotingObserver : public ConversionObserver {
 public:
  void resultHandedOver(std::int16_t system, const std::string& name, const SharedBytes& bytes) override {
    systems.push_back(system);
    results[name] = *bytes;
  }

  std::vector<std::int16_t> systems;
  std::map<std::string, std::string> results;
};

TEST_F(ConversionRun, GivesEachResultToTheObserver) {
  NotingObserver observer;
  convertGroup(program, {.firstResultFile = result1, .observer = &observer});
  EXPECT_EQ(observer.systems, (std::vector<std::int16_t>{1, 2}));
  EXPECT_EQ(observer.results,
            (std::map<std::string, std::string>{{result1, host.file(result1)}, {result2, host.file(result2)}}));
}

TEST_F(ConversionRun, GivesTheObserverNoResultThatCannotBeWritten) {
  host.unwritable.insert(result2);
  NotingObserver observer;
  EXPECT_THROW(convertGroup(program, {.firstResultFile = result1, .observer = &observer}), ProgramEnd);
  EXPECT_EQ(observer.systems, std::vector<std::int16_t>{1});
}

// --- the options that the handler takes from the controls ---

TEST_F(ConversionRun, TheHandlerUsesTheNameInTheTextBox) {
  program.panel.txtFirstResultFile.text = "C:\\OTHER\\PAGE0001.MUS";
  clicked(program, &Panel::cmdConvert);
  EXPECT_EQ(host.shown, std::vector{messages::created(2, "C:\\OTHER\\PAGE0001.MUS", "C:\\OTHER\\PAGE0002.MUS")});
  EXPECT_TRUE(host.hasFile("C:\\OTHER\\PAGE0002.MUS"));
}

TEST_F(ConversionRun, TheHandlerFollowsTheOverwriteBox) {
  program.panel.txtFirstResultFile.text = result1;
  host.addFile(result1, "old");
  for (const bool overwrite : {true, false}) {
    host.messages.clear();
    program.panel.chkOverwrite.checked = overwrite;
    clicked(program, &Panel::cmdConvert);
    EXPECT_EQ(questions() == 0, overwrite);
  }
}

TEST_F(ConversionRun, TheHandlerFollowsTheBoxForInstrumentNumbers) {
  program.panel.txtFirstResultFile.text = result1;
  for (const bool shown : {true, false}) {
    program.panel.chkShowInstrNumber.checked = shown;
    clicked(program, &Panel::cmdConvert);
    EXPECT_EQ(showsNumbers(result1), shown);
  }
}

}  // namespace
}  // namespace kiv::test
