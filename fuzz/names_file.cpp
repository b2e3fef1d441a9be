// Any bytes as a names file.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/support/expect.h"
#include "fuzz/support/memory_host.h"
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

/// A load without a message has taken every record, and all that it took can be used.
void checkLoad(MemoryHost& host, const NamesTable& names, std::string_view text) {
  expect(static_cast<std::size_t>(names.nameCount) == recordsIn(text), "every record is a name");
  expect(static_cast<std::size_t>(names.nameCount) == names.nameList.size(), "names are counted");
  expect(names.namesValid == (names.nameCount > 0), "names are valid when there are some");
  for (int i = 1; i <= names.nameCount; ++i) {
    expect(names.name(i) == host.upperCase(names.name(i)), "names are in capitals");
    expect(justPath(names.name(i)) == names.firstPrefix, "all names lie in one folder");
    expect(FileExists(host, names.name(i)), "all names are names of files");
  }
}

void run(std::string_view text) {
  static MemoryHost host;
  host.restart();
  host.addFile("C:\\M\\A1.MUS", "");
  host.addFile("C:\\M\\A2.MUS", "");
  host.addFile("B\\A1.MUS", "");
  host.addFile(namesFile, std::string(text));
  host.refusesDeletion = text.size() % 5 == 4;
  NamesTable names;
  const auto end = endOf([&] { LoadNamesTable(host, namesFile, names); });
  expect(!end, "no names file ends the program");
  expect(host.find(namesFile) == nullptr || *host.find(namesFile) == text, "the names file stays as it is, or goes");
  expect(host.find(namesFile) != nullptr || names.nameCount == 0, "a names file that is deleted leaves no names");
  if (host.messages == 0) {
    checkLoad(host, names, text);
  }
  // A second load starts with what the first one left.
  LoadNamesTable(host, namesFile, names);
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
