#include "messages/shell_messages.h"

#include "messages/new_message.h"

namespace kiv::messages {
Message invalidCall(const std::string& commandLine) {
  Message message = critical(code::other, "Invalid call to KivSystem:\r\n" + commandLine);
  message.names = {commandLine};
  return message;
}

Message settingsFileNotOpened(const std::string& file) {
  return critical(code::other, "File does not open: " + file);
}

Message moduleMissing(const std::string& module) {
  return critical(code::other, "Module " + module + " not properly installed");
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
  return critical(code::other, "ShellAndWait error: " + command);
}

Message reportNotShown(const std::string& file, const std::string& reason) {
  return information(code::other, "The report cannot be shown.\r\n" + file + "\r\n" + reason);
}

}  // namespace kiv::messages
