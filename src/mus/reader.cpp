#include "mus/reader.h"

#include "messages/page_messages.h"

namespace kiv {

void MusReader::openMUSfile(Files& files, const std::string& musFileName) {
  openMUSfile(musFileName, files.openInput(musFileName));
}

void MusReader::openMUSfile(const std::string& musFileName, std::unique_ptr<InputFile> file) {
  musFileName_ = musFileName;
  page_ = PageWalker(file ? buffer_.read(*file, readableBytes).value_or("") : "");
}

Location MusReader::location() const {
  Location location;
  location.file = musFileName_;
  location.item = page_.itemsInFile();
  return location;
}

void readFile(Files& files, const std::string& musFileName, ItemTable& table) {
  table.clear();
  table.beginFile(musFileName);
  MusReader reader;
  reader.openMUSfile(files, musFileName);
  while (true) {
    const ReadStatus readStatus = reader.readItem();
    const std::int16_t number = reader.page().itemsInFile();
    if (readStatus == ReadStatus::structuralError) {
      endProgram(messages::structuralErrorInSort(musFileName, number));
    }
    if (readStatus == ReadStatus::endOfItems) {
      return;
    }
    reader.page().decode(table.newItem(number));
  }
}

}  // namespace kiv
