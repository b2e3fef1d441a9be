#include "messages/input_messages.h"

#include <gtest/gtest.h>

#include "tests/messages/expect.h"

namespace kiv::test {
namespace {

using messages::RefusedNames;

const Location inNamesFile{.file = "C:\\N.TXT"};

TEST(NamesFileMessage, RecordNotTerminated) {
  expectInformation(messages::recordNotTerminated("C:\\M\\X1.MUS", "C:\\N.TXT"), "names-not-terminated",
                    "Filename [C:\\M\\X1.MUS] in Names file not terminated by ' 1'. Hit enter to continue.",
                    inNamesFile);
}

TEST(NamesFileMessage, RecordWithoutFolder) {
  expectInformation(messages::recordWithoutFolder("X1.MUS", "C:\\N.TXT"), "names-no-folder",
                    "Invalid record format in Names file.\r\nName must have a path prefix:\r\nX1.MUS\r\n"
                    "Names file will be deleted after view.",
                    inNamesFile);
  expectInformation(messages::recordWithoutFolder("X1.MUS", "C:\\N.TXT", RefusedNames::areKept), "names-no-folder",
                    "Invalid record format in Names file.\r\nName must have a path prefix:\r\nX1.MUS", inNamesFile);
}

TEST(NamesFileMessage, FoldersDiffer) {
  expectInformation(messages::foldersDiffer("C:\\N.TXT"), "names-folders-differ",
                    "Names in Names file do not all have the same path prefix.\r\n"
                    "This is a requirement for KivSystem.\r\n"
                    "Names file will be deleted after view.",
                    inNamesFile);
  expectInformation(messages::foldersDiffer("C:\\N.TXT", RefusedNames::areKept), "names-folders-differ",
                    "Names in Names file do not all have the same path prefix.\r\n"
                    "This is a requirement for KivSystem.",
                    inNamesFile);
}

TEST(NamesFileMessage, FileMissing) {
  expectInformation(messages::fileMissing("C:\\M\\X1.MUS"), "names-file-missing",
                    "Name in Names file [C:\\M\\X1.MUS] refers to non-existing or unaccessable file\r\n"
                    "Names file will be deleted after view.",
                    {.file = "C:\\M\\X1.MUS"});
  expectInformation(messages::fileMissing("C:\\M\\X1.MUS", RefusedNames::areKept), "names-file-missing",
                    "Name in Names file [C:\\M\\X1.MUS] refers to non-existing or unaccessable file",
                    {.file = "C:\\M\\X1.MUS"});
  expectInformation(messages::fileMissingOnDiskette("A:\\X1.MUS"), "names-file-missing",
                    "Name in names file [A:\\X1.MUS] refers to non-existing or unaccessable file\r\n"
                    "Define a new names file by music file selection.",
                    {.file = "A:\\X1.MUS"});
}

TEST(NamesFileMessage, TheFileAsAWhole) {
  expectInformation(messages::namesFileNotErased("C:\\N.TXT"), "names-not-erased", "Failed to erase C:\\N.TXT",
                    inNamesFile);
  expectCritical(messages::namesFileNotCreated("C:\\N.TXT"), "other",
                 "C:\\N.TXT creation failed. Programming error. Hit OK to abort", inNamesFile);
  expectCritical(messages::noInputFiles("C:\\N.TXT"), "no-input-files", "No input files: C:\\N.TXT", inNamesFile);
}

TEST(FileNameMessage, NamingProblem) {
  expectCritical(messages::namingProblem("C:\\M\\PAGE 1.MUS", "C:\\KIV"), "naming",
                 "File naming problem: C:\\M\\PAGE 1.MUS\r\nCurrent folder = C:\\KIV\r\n"
                 "Filenames required for this program must have this format:\r\n\r\n"
                 "    <letter(s)><digit(s)><optionally one sequence letter>.<suffix>\r\n\r\nRename your input.",
                 {.file = "C:\\M\\PAGE 1.MUS"});
}

TEST(FileNameMessage, NameWithoutNumber) {
  expectCritical(messages::nameWithoutNumber("C:\\M\\A-.MUS"), "naming-no-number",
                 "Filename has no numeric part. This is required for KivSystem: C:\\M\\A-.MUS",
                 {.file = "C:\\M\\A-.MUS"});
}

TEST(FileNameMessage, ReservedName) {
  expectCritical(messages::reservedName("C:\\M\\WORK0001.MUS"), "reserved-name",
                 "Input file cannot be C:\\M\\WORK0001.MUS\r\nThat name is reserved for output.\r\n"
                 "You need to rename the group of files (using KivRenam > File) and retry.",
                 {.file = "C:\\M\\WORK0001.MUS"});
}

TEST(FileNameMessage, OddPageLetters) {
  expectInformation(messages::oddPageLetters("X1.MUS", "AC", "C:\\M\\X1A.MUS"), "page-letters",
                    "File selection has Page letters that do not start with A or are not consecutive: \r\n"
                    "X1.MUS [AC]\r\n\r\nThis is a warning only. The program will proceed.",
                    {.file = "C:\\M\\X1A.MUS"});
}

}  // namespace
}  // namespace kiv::test
