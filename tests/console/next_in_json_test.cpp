#include <algorithm>
#include <sstream>

#include "tests/console/convert_fixture.h"
#include "tests/console/json_schema.h"

namespace kiv::test {
namespace {

/// A command line, and whether it has something to say about what to do next.
struct NextRun {
  Names arguments;
  bool hasNext = false;
};

// The commands, and the pages that the tests have.
const std::vector<NextRun> nextRuns = {{{"analyze", "x1.mus", "x2.mus"}, true},
                                       {{"analyze", "whole1.mus"}, false},
                                       {{"analyze", "zero1.mus"}, true},
                                       {{"analyze", "broken1.mus"}, true},
                                       {{"analyze", "text1.mus"}, true},
                                       {{"analyze", "empty1.mus"}, false},
                                       {{"analyze", "--keep-going", "x1.mus", "broken1.mus"}, true},
                                       {{"analyze", "--like-panel", "x1.mus", "x2.mus"}, false},
                                       {{"convert", "x1.mus", "x2.mus"}, false},
                                       {{"convert", "whole1.mus"}, true},
                                       {{"convert", "--dry-run", "whole1.mus"}, false},
                                       {{"convert", "--force", "whole1.mus"}, false},
                                       {{"convert", "zero1.mus", "--force"}, true},
                                       {{"convert", "zero1.mus", "--corrections", "table.csv"}, true},
                                       {{"convert", "broken1.mus"}, true},
                                       {{"trace", "whole1.mus"}, true},
                                       {{"trace", "broken1.mus"}, true},
                                       {{"verify", "x1.mus", "x2.mus"}, true},
                                       {{"verify", "broken1.mus"}, true},
                                       {{"sort", "x1.mus"}, false},
                                       {{"sort", "x1.mus", "broken1.mus"}, true},
                                       {{"instruments", "x1.mus"}, false},
                                       {{"instruments", "broken1.mus"}, true},
                                       {{"suggest", "x1.mus"}, false},
                                       {{"suggest", "broken1.mus"}, true},
                                       {{"suggest", "zero1.mus", "-o", "new.csv"}, false},
                                       {{"recover", "damaged1.mus"}, true},
                                       {{"recover", "damaged1.mus", "--dry-run"}, false},
                                       {{"recover", "text1.mus"}, true},
                                       {{"recover", "whole1.mus"}, false},
                                       {{"fix", "x1.mus", "--map", "102=7", "-o", "fixed"}, false},
                                       {{"survey", "."}, false}};

/// What people read after "Next: " is in JSON as "next".
class NextInJson : public ConsoleConvert {
 protected:
  NextInJson() {
    addTwo();
    addPage("zero1.mus", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
    addPage("whole1.mus", bass);
    place.write("damaged1.mus", page(bass + "note 1 at 9 height 5 p5 2 duration 1\nbytes FF FF FF FF\n"));
    place.write("broken1.mus", page("bytes FF FF FF FF\n"));
    place.write("text1.mus", bass);
    place.write("empty1.mus", "");
    EXPECT_EQ(place.kivsys({"suggest", "zero1.mus", "-o", "table.csv"}).status, 0);
  }

  /// The commands after "Next: ", in order.
  static Names nextLines(const std::string& text) {
    const std::string begin = "Next: ";
    std::istringstream stream(text);
    Names commands;
    for (std::string line; std::getline(stream, line);) {
      if (line.starts_with(begin)) {
        commands.push_back(line.substr(begin.size()));
      }
    }
    return commands;
  }

  /// The workplace as it was, so that both runs find the same.
  Ended inCopy(const Names& arguments) const {
    const Workplace copy;
    for (const auto& entry : fs::directory_iterator(place.path())) {
      fs::copy(entry.path(), copy.path() / entry.path().filename(), fs::copy_options::recursive);
    }
    return copy.kivsys(arguments);
  }
};

TEST_F(NextInJson, IsWhatPeopleReadInEveryCommand) {
  for (const NextRun& run : nextRuns) {
    const Names human = nextLines(inCopy(run.arguments).error);
    Names arguments = run.arguments;
    arguments.emplace_back("--json");
    const Json object = Json::parse(inCopy(arguments).out);
    const std::string command = ::testing::PrintToString(run.arguments);
    EXPECT_EQ(!human.empty(), run.hasNext) << command;
    if (human.empty()) {
      EXPECT_TRUE(!object.contains("next") || object["next"].is_null()) << command << object["next"];
    } else {
      ASSERT_TRUE(object.contains("next") && object["next"].is_string()) << command << " " << human.front();
      EXPECT_EQ(object["next"].get<std::string>(), human.front()) << command;
      EXPECT_EQ(std::count(human.begin(), human.end(), human.front()), 1) << command << " says it twice";
    }
  }
}

}  // namespace
}  // namespace kiv::test
