#include "messages/page_messages.h"

#include "messages/codes.h"

namespace kiv::messages {
namespace {

Message critical(std::string_view code, std::string text, const std::string& file, int itemNumber = 0) {
  Message message{code, Icon::critical, Buttons::ok, std::move(text), {}, {}};
  message.location.file = file;
  message.location.item = itemNumber;
  return message;
}

}  // namespace

Message structuralError(const std::string& file, int itemNumber, const std::string& currentFolder) {
  Message message = critical(code::structureError,
                             "Structural error in MUS file: " + file +
                                 "\r\nTry to recover with KivValid/KivRecover.\r\nCurrent folder = " + currentFolder +
                                 "\r\nItem number = " + std::to_string(itemNumber),
                             file, itemNumber);
  message.names = {currentFolder};
  return message;
}

Message structuralErrorInSort(const std::string& file, int itemNumber) {
  return critical(code::structureError, "Structural error in MUS file. Try to recover with KivValid/KivRecover.", file,
                  itemNumber);
}

Message tooManyItems(const std::string& file) {
  return critical(code::tooManyItems, "MUS file too big for operation. Hit OK to terminate.", file);
}

Message resultNotWritten(const std::string& file) {
  return critical(code::resultNotWritten, "Open of output MUS file failed. Hit OK to terminate.", file);
}

Message resultUnreadable(const std::string& file, int itemNumber, const Location& origin) {
  std::string text = "Output MUS file cannot be read back and is not written: " + file +
                     "\r\nItem number = " + std::to_string(itemNumber);
  if (!origin.file.empty()) {
    text += "\r\nIt comes from " + origin.file + ", item " + std::to_string(origin.item);
  }
  Message message = critical(code::resultUnreadable, std::move(text), origin.file, origin.item);
  message.names = {file};
  return message;
}

bool isDamage(const Message& message) {
  return message.code == code::structureError ||
         (message.code == code::subscriptOutOfRange && message.location.item > 0);
}

Message exchangeOfDifferentKinds() {
  return {code::programmingError, Icon::none, Buttons::ok, "Programming error 1 in exch", {}, {}};
}

Message exchangeOfUnknownKind() {
  return {code::programmingError, Icon::none, Buttons::ok, "Programming error 2 in exch", {}, {}};
}

}  // namespace kiv::messages
