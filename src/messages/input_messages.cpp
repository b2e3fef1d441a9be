#include "messages/input_messages.h"

namespace kiv::messages {
namespace {

std::string deletionNotice(RefusedNames fate) {
  return fate == RefusedNames::areDeleted ? "\r\nNames file will be deleted after view." : "";
}

Message message(std::string_view code, Icon icon, std::string text, const std::string& file) {
  Message result{code, icon, Buttons::ok, std::move(text), {}, {}};
  result.location.file = file;
  return result;
}

std::string isMissing(const std::string& name) {
  return " [" + name + "] refers to non-existing or unaccessable file";
}

}  // namespace

Message recordNotTerminated(const std::string& line, const std::string& namesFile) {
  return message(code::namesNotTerminated, Icon::information,
                 "Filename [" + line + "] in Names file not terminated by ' 1'. Hit enter to continue.", namesFile);
}

Message recordWithoutFolder(const std::string& record, const std::string& namesFile, RefusedNames fate) {
  return message(
      code::namesNoFolder, Icon::information,
      "Invalid record format in Names file.\r\nName must have a path prefix:\r\n" + record + deletionNotice(fate),
      namesFile);
}

Message foldersDiffer(const std::string& namesFile, RefusedNames fate) {
  return message(code::namesFoldersDiffer, Icon::information,
                 "Names in Names file do not all have the same path prefix.\r\n"
                 "This is a requirement for KivSystem." +
                     deletionNotice(fate),
                 namesFile);
}

Message fileMissingOnDiskette(const std::string& name) {
  return message(code::namesFileMissing, Icon::information,
                 "Name in names file" + isMissing(name) + "\r\nDefine a new names file by music file selection.", name);
}

Message fileMissing(const std::string& name, RefusedNames fate) {
  return message(code::namesFileMissing, Icon::information,
                 "Name in Names file" + isMissing(name) + deletionNotice(fate), name);
}

Message namesFileNotErased(const std::string& namesFile) {
  return message(code::namesNotErased, Icon::information, "Failed to erase " + namesFile, namesFile);
}

Message namesFileNotCreated(const std::string& namesFile) {
  return message(code::other, Icon::critical, namesFile + " creation failed. Programming error. Hit OK to abort",
                 namesFile);
}

Message noInputFiles(const std::string& namesFile) {
  return message(code::noInputFiles, Icon::critical, "No input files: " + namesFile, namesFile);
}

Message namingProblem(const std::string& file, const std::string& currentFolder) {
  Message result =
      message(code::naming, Icon::critical,
              "File naming problem: " + file + "\r\nCurrent folder = " + currentFolder +
                  "\r\nFilenames required for this program must have this format:\r\n\r\n"
                  "    <letter(s)><digit(s)><optionally one sequence letter>.<suffix>\r\n\r\nRename your input.",
              file);
  result.names = {currentFolder};
  return result;
}

Message nameWithoutNumber(const std::string& file) {
  return message(code::namingNoNumber, Icon::critical,
                 "Filename has no numeric part. This is required for KivSystem: " + file, file);
}

Message reservedName(const std::string& file) {
  return message(code::reservedName, Icon::critical,
                 "Input file cannot be " + file +
                     "\r\nThat name is reserved for output.\r\n"
                     "You need to rename the group of files (using KivRenam > File) and retry.",
                 file);
}

Message oddPageLetters(const std::string& pageName, const std::string& letters, const std::string& file) {
  return message(code::pageLetters, Icon::information,
                 "File selection has Page letters that do not start with A or are not consecutive: \r\n" + pageName +
                     " [" + letters + "]\r\n\r\nThis is a warning only. The program will proceed.",
                 file);
}

}  // namespace kiv::messages
