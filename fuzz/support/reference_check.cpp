#include "fuzz/support/reference_check.h"

#include <algorithm>

#include "fuzz/support/expect.h"
#include "shell/cmd_convert.h"
#include "tests/reference/convert_group.h"

namespace kiv::fuzz {
namespace {

void copyFiles(FuzzFiles& from, FuzzFiles& to) {
  for (const std::string& name : from.names()) {
    to.addFile(name, *from.find(name));
  }
}

std::optional<int> convertByReference(FuzzHost& host, const KivSystem& program, reference::Tables& tables) {
  const reference::Options options{program.panel.txtFirstResultFile.text, program.panel.chkOverwrite.checked,
                                   program.panel.chkShowInstrNumber.checked};
  tables.musFileName = program.musFileName;
  return exitCodeOf(host.user,
                    [&] { host.user.show(reference::convertGroup(host.host(), program.firstClefs, options, tables)); });
}

bool haveSameText(const Message& one, const Message& other) {
  return one.code == other.code && one.text == other.text;
}

void expectSameFiles(FuzzFiles& files, FuzzFiles& expected) {
  const std::vector<std::string> names = files.names();
  expect(names == expected.names(), "the conversion writes the files that the reference implementation writes");
  for (const std::string& name : names) {
    expect(*files.find(name) == *expected.find(name),
           "the conversion writes the bytes that the reference implementation writes");
  }
}

}  // namespace

std::optional<int> convertBesideReference(FreshProgram& fresh, reference::Tables& tables) {
  FuzzHost other;
  copyFiles(fresh.files, other.files);
  const std::optional<int> expected = convertByReference(other, fresh.program, tables);
  const auto shownBefore = static_cast<std::ptrdiff_t>(fresh.user.messages().size());
  const std::optional<int> exitCode = exitCodeOf(fresh.user, [&] { cmdConvert_Click(fresh.program); });
  expect(exitCode == expected, "the conversion ends as the reference implementation does");
  const std::vector<Message>& shown = fresh.user.messages();
  expect(std::equal(shown.begin() + shownBefore, shown.end(), other.user.messages().begin(),
                    other.user.messages().end(), haveSameText),
         "the conversion shows the messages that the reference implementation shows");
  expectSameFiles(fresh.files, other.files);
  return exitCode;
}

}  // namespace kiv::fuzz
