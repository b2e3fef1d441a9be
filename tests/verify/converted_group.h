#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "conversion/fitted_staves.h"
#include "mus/item.h"
#include "tests/support/fake_host.h"
#include "verify/verify.h"

namespace kiv::test {

/// Pages that have been analyzed and converted, to be verified or tampered with.
class ConvertedGroup {
 public:
  /// Pages by the name of their file in C:\M, in their order; the results are in C:\OUT.
  explicit ConvertedGroup(const std::map<std::string, std::string>& pages, bool showNumbers = true,
                          RestStaves restStaves = RestStaves::asKnownSoFar);

  /// Whether analysis and conversion have succeeded.
  bool converted() const { return converted_; }
  proof::Verification verify();
  /// The findings, a line each: "WORK0001.MUS, item 3: what".
  std::string findings();

  std::string input(const std::string& name) const { return host.file("C:\\M\\" + name); }
  std::string result(int system) const { return host.file(resultName(system)); }
  int systems() const;
  /// All files that a conversion writes, without the head line of its report.
  std::string everythingWritten() const;

  void replaceInput(const std::string& name, const std::string& bytes) { host.addFile("C:\\M\\" + name, bytes); }
  void replaceResult(int system, const std::string& bytes) { host.addFile(resultName(system), bytes); }
  /// Changes the items of a result and writes it as a conversion would.
  void changeResult(int system, const std::function<void(std::vector<Item>&)>& change);

  static std::string resultName(int system);

  FakeHost host;
  proof::ConversionToProve conversion{resultName(1), std::nullopt};

 private:
  bool converted_ = true;
};

}  // namespace kiv::test
