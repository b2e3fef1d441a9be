// Any bytes as a names file.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/support/expect.h"
#include "fuzz/support/fuzz_host.h"
#include "fuzz/support/parts.h"
#include "input/file_names.h"
#include "input/files.h"
#include "input/names_table.h"

namespace kiv::fuzz {
namespace {

constexpr const char* namesFile = "C:\\N.TXT";

std::size_t recordsIn(std::string_view text) {
  std::size_t records = 0;
  forEachLine(text, [&](std::string_view line) {
    const std::string_view record = withoutBlanks(line);
    records += !record.starts_with(' ') && !record.starts_with('*') && record.ends_with(" 1") ? 1U : 0U;
  });
  return records;
}

/// A load without a message has read every record, and all names can be used.
void checkLoad(FuzzHost& host, const NamesTable& names, std::string_view text) {
  expect(static_cast<std::size_t>(names.nameCount) == recordsIn(text), "every record is a name");
  expect(static_cast<std::size_t>(names.nameCount) == names.nameList.size(), "names are counted");
  expect(names.namesValid == (names.nameCount > 0), "names are valid when there are some");
  for (int i = 1; i <= names.nameCount; ++i) {
    expect(names.name(i) == host.machine.upperCase(names.name(i)), "names are in capitals");
    expect(justPath(host.machine, names.name(i)) == names.firstPrefix, "all names lie in one folder");
    expect(FileExists(host.host(), names.name(i)), "all names are names of files");
  }
}

void run(std::string_view text) {
  FuzzHost host;
  FuzzFiles& files = host.files;
  files.addFile("C:\\M\\A1.MUS", "");
  files.addFile("C:\\M\\A2.MUS", "");
  files.addFile("B\\A1.MUS", "");
  files.addFile(namesFile, std::string(text));
  files.refusesDeletion = text.size() % 5 == 4;
  NamesTable names;
  const auto end = exitCodeOf(host.user, [&] { LoadNamesTable(host.host(), namesFile, names); });
  expect(!end, "no names file ends the program");
  expect(files.find(namesFile) == nullptr || *files.find(namesFile) == text, "the names file stays as it is, or goes");
  expect(files.find(namesFile) != nullptr || names.nameCount == 0, "a names file that is deleted leaves no names");
  if (host.user.messages().empty()) {
    checkLoad(host, names, text);
  }
  // A second load starts with what the first one left.
  LoadNamesTable(host.host(), namesFile, names);
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
