#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "shell/cmd_run.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {

/// A click on Analyze, or a sibling's call, with pages in C:\M.
class Analyze : public ::testing::Test {
 protected:
  void addPage(const std::string& file, std::string_view text) {
    host.addFile("C:\\M\\" + file, page(text));
    namesFile += "C:\\M\\" + file + " 1\r\n";
  }
  void run(const std::string& commandLine = "") {
    host.addFile("C:\\N.TXT", namesFile);
    program.settings.commandLine = commandLine;
    program.settings.namesFile = "C:\\N.TXT";
    program.settings.versionText = "v1.0.0.0";
    end = endOf(host, [&] { cmdRun_Click(program); });
  }
  std::string verdict() const { return host.file("KivSystem1.TXT"); }
  /// The records of the report, without its comment lines.
  std::string records() const {
    std::string kept;
    const std::string report = host.file("KivSystem2.TXT");
    for (std::size_t at = 0; at < report.size();) {
      const std::size_t next = report.find('\n', at) + 1;
      kept += report[at] == '*' ? "" : report.substr(at, next - at);
      at = next;
    }
    return kept;
  }
  bool called(const std::string& call) const {
    return std::find(host.calls.begin(), host.calls.end(), call) != host.calls.end();
  }

  FakeHost host;
  KivSystem program{host};
  std::string namesFile;
  std::optional<int> end;

  const std::string fluteAndBass = "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
  const std::string bass = "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n";
};

}  // namespace kiv::test
