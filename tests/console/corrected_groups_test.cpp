// Corrections on reading against corrected copies, over generated groups.

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
[[maybe_unused]] const int seeded = ::setenv("RC_PARAMS", "seed=19940307 max_success=40", 0);

/// A generated group on the disk, with a table that gives some of its staves other ids.
class GroupWithCorrections {
 public:
  explicit GroupWithCorrections(const Group& group) {
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
  const GroupWithCorrections group(*groups(21));
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

}  // namespace
}  // namespace kiv::test
