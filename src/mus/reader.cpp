#include "mus/reader.h"

namespace kiv {

void MusReader::openMUSfile(Host& host, const std::string& musFileName) {
  openMUSfile(musFileName, host.openInput(musFileName));
}

void MusReader::openMUSfile(const std::string& musFileName, std::unique_ptr<InputFile> file) {
  musFileName_ = musFileName;
  page_ = PageWalker(file ? room_.read(*file, readableBytes).value_or("") : "");
}

std::string MusReader::place() const {
  return musFileName_ + ", item " + std::to_string(page_.itemsInFile());
}

void refusePage(Host& host, const std::string& musFileName, int itemNumber) {
  host.fatal("Structural error in MUS file: " + musFileName +
             "\r\nTry to recover with KivValid/KivRecover.\r\nCurrent folder = " + host.currentFolder() +
             "\r\nItem number = " + std::to_string(itemNumber));
}

void readFile(Host& host, const std::string& musFileName, ItemTable& table) {
  table.restart();
  MusReader reader;
  reader.openMUSfile(host, musFileName);
  while (true) {
    const ReadStatus readStatus = reader.readItem(host);
    if (readStatus == ReadStatus::structuralError) {
      host.fatal("Structural error in MUS file. Try to recover with KivValid/KivRecover.");
    }
    if (readStatus == ReadStatus::endOfItems) {
      return;
    }
    reader.page().decode(table.newItem(host));
  }
}

}  // namespace kiv
