#include "messages/shell_messages.h"

namespace kiv::messages {
namespace {

Message information(std::string_view code, std::string text) {
  return {code, Icon::information, Buttons::ok, std::move(text), {}, {}};
}

Message critical(std::string text) {
  return {code::other, Icon::critical, Buttons::ok, std::move(text), {}, {}};
}

}  // namespace

Message invalidCall(const std::string& commandLine) {
  return critical("Invalid call to KivSystem:\r\n" + commandLine);
}

Message settingsFileNotOpened(const std::string& file) {
  return critical("File does not open: " + file);
}

Message moduleMissing(const std::string& module) {
  return critical("Module " + module + " not properly installed");
}

Message dropError(int number) {
  return information(code::other, "Drop error" + std::string(number < 0 ? "" : " ") + std::to_string(number));
}

Message folderModuleMissing() {
  return information(code::other,
                     "Module KIVFOLDR.EXE not properly installed. Name of default folder cannot be modified.");
}

Message folderAnswerNotRead() {
  return information(code::other, "Failed to open output folder");
}

Message programNotStarted(const std::string& commandLine) {
  return information(code::programNotStarted, "Some problem calling " + commandLine);
}

Message notACommand(const std::string& command) {
  return critical("ShellAndWait error: " + command);
}

}  // namespace kiv::messages
