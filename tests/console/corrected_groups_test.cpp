// Corrections on reading against corrected copies, and lists of instruments, over generated groups.

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/console/run_program.h"
#include "tests/properties/groups.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

// The same groups in every run, unless whoever runs the tests wants others.
[[maybe_unused]] const int seeded = ::setenv("RC_PARAMS", "seed=19940307 max_success=20", 0);

/// A generated group on the disk, with a table that gives some of its staves other ids, and one of its instruments.
class GroupWithTables {
 public:
  explicit GroupWithTables(const Group& group) {
    for (const char* const folder : {"m", "read", "fixed-out"}) {
      std::filesystem::create_directory(place_.path() / folder);
    }
    for (const auto& [name, text] : group.pages) {
      names_.push_back(name);
      place_.write("m/" + name, page(text));
    }
    place_.write("c.csv", tableFor(group));
  }

  Ended fix() const { return kivsys("fix", "m", {"--corrections", "c.csv", "-o", "fixed"}); }
  Ended convert(const std::string& pages, const std::string& out, std::vector<std::string> options) const {
    options.insert(options.end(), {"--force", "-q", "--folder", out, "--result", out + "/WORK0001.MUS"});
    return kivsys("convert", pages, std::move(options));
  }
  Ended verify() const {
    return kivsys("verify", "m", {"--corrections", "c.csv", "--folder", "read", "--result", "read/WORK0001.MUS"});
  }
  /// Writes the list of the instruments, and then these lines.
  void list(const std::string& more) const {
    place_.write("l.csv", kivsys("instruments", "m", {"--csv", "-q"}).out + more);
  }
  /// All results of a conversion, and its verdict.
  std::string results(const std::string& folder) const {
    std::string all;
    for (const std::string& file : filesIn(place_.path() / folder)) {
      all += file == "KivSystem2.TXT" ? "" : file + ": " + place_.read(folder + "/" + file);
    }
    return all;
  }

 private:
  static std::string tableFor(const Group& group) {
    std::string table = "file,staff,new_id\n";
    for (const auto& system : group.systems) {
      for (const auto& [instrument, staff] : system) {
        if (*rc::gen::inRange(0, 3) == 0) {
          // One that the group may have, or another; two equal ones in a system are no matter here.
          const int id = *rc::gen::element(instrument, instrument + 1, 7, 300);
          table += staff.file + "," + std::to_string(staff.staff) + "," + std::to_string(std::max(id, 1)) + "\n";
        }
      }
    }
    return table;
  }
  Ended kivsys(const std::string& command, const std::string& pages, std::vector<std::string> options) const {
    std::vector<std::string> arguments = {command};
    for (const std::string& name : names_) {
      arguments.push_back(std::string(pages).append("/").append(name));
    }
    arguments.insert(arguments.end(), options.begin(), options.end());
    return place_.kivsys(arguments);
  }

  Workplace place_;
  std::vector<std::string> names_;
};

RC_GTEST_PROP(CorrectionsProperty, ReadingWithCorrectionsGivesTheResultsOfCorrectedCopies, ()) {
  const GroupWithTables group(*groups(21));
  RC_ASSERT(group.fix().status == 0);
  const Ended fromCopies = group.convert("fixed", "fixed-out", {});
  const Ended fromReading = group.convert("m", "read", {"--corrections", "c.csv"});
  RC_ASSERT(fromReading.status == fromCopies.status);
  RC_ASSERT(group.results("read") == group.results("fixed-out"));
  RC_TAG(fromReading.status);
  if (fromReading.status == 0) {
    const Ended proof = group.verify();
    RC_LOG() << proof.out << proof.error;
    RC_ASSERT(proof.status == 0 || proof.out.find("two staves of instrument") != std::string::npos);
  }
}

RC_GTEST_PROP(LayoutProperty, TheListOfAGroupItselfChangesNothing, ()) {
  const GroupWithTables group(*groups(22));
  group.list("");
  const Ended plain = group.convert("m", "fixed-out", {"--allow-zero-id"});
  const Ended listed = group.convert("m", "read", {"--layout", "l.csv", "--allow-zero-id"});
  RC_LOG() << listed.error;
  RC_ASSERT(listed.status == plain.status);
  RC_ASSERT(group.results("read") == group.results("fixed-out"));
}

RC_GTEST_PROP(LayoutProperty, ResultsWithSilentInstrumentsAreProved, ()) {
  const GroupWithTables group(*groups(23));
  std::string silent;
  for (const int id : {31000, 20, 31001}) {
    const std::string clef = *rc::gen::element<std::string>("", "treble", "alto+2", "kind 3 -1");
    const std::string key = *rc::gen::element<std::string>("", "0", "2#", "5b");
    const std::string lines = *rc::gen::element<std::string>("", "1", "5", "\"3, 5\"");
    const std::string size = *rc::gen::element<std::string>("", "1", "0.6");
    silent += "9," + std::to_string(id) + ",Harp,,,,,,,,,,,," + clef + "," + lines + "," + size + "," + key + ",\n";
  }
  group.list(silent);
  const Ended ended = group.convert("m", "read", {"--layout", "l.csv", "--allow-zero-id", "--verify"});
  RC_LOG() << ended.out << ended.error;
  RC_ASSERT(ended.status == 0);
  RC_ASSERT(ended.out.find("PROVED=YES") != std::string::npos);
}

}  // namespace
}  // namespace kiv::test
