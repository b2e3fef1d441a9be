#include "tests/mus/plain_reader.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include "base/exact_number.h"

namespace kiv::test {
std::string PlainReader::read_word_text() {
  ++wordsRead;
  std::string chunk;
  for (int n = 0; n < 4; ++n) {
    chunk.push_back(static_cast<char>(read_byte()));
  }
  return chunk;
}

float PlainReader::read_word() {
  std::uint32_t bits = 0;
  const std::string word = read_word_text();
  for (int n = 3; n >= 0; --n) {
    bits = bits * 256 + static_cast<unsigned char>(word[static_cast<std::size_t>(n)]);
  }
  return std::bit_cast<float>(bits);
}

void PlainReader::read_trailer() {
  read_word_text();
  const int low = read_byte();
  const int middle = read_byte();
  const int high = read_byte();
  trailerNumberText = std::to_string(low + 256 * middle + 65536 * high) + " ";
  read_byte();
  read_word_text();
  unitText = read_word() == 0.0F ? "(Inches)" : "(Metric)";
}

ReadStatus PlainReader::readItem() {
  if (wordsRead > fileWords) {
    return ReadStatus::structuralError;
  }
  if (wordsRead == fileWords - 6) {
    read_trailer();
    return ReadStatus::endOfItems;
  }
  if (wordsRead == fileWords - 5) {
    return ReadStatus::endOfItems;
  }
  ++itemsInFile;
  const float length = std::nearbyint(read_word());
  if (!(length >= 2 && length <= 32767)) {
    return ReadStatus::structuralError;
  }
  curPar.fill(0);
  curText.clear();
  curPar[1] = read_word();
  if (!(curPar[1] >= 1 && curPar[1] <= 18)) {
    return ReadStatus::structuralError;
  }
  const bool hasText = curPar[1] == 11 || curPar[1] == 15 || curPar[1] == 16;
  return hasText ? readText(static_cast<int>(length)) : readPlain(static_cast<int>(length));
}

ReadStatus PlainReader::readText(int length) {
  if (length < 14) {
    return ReadStatus::structuralError;
  }
  for (std::size_t p = 2; p <= 12; ++p) {
    curPar[p] = read_word();
  }
  if (curPar[1] == 15) {
    curPar[13] = read_word();
  } else {
    read_word_text();
  }
  for (int n = 14; n <= length; ++n) {
    curText += read_word_text();
  }
  if (curPar[1] == 11) {
    curText = curText.substr(0, 5);
  }
  if (curPar[1] == 16) {
    const double count = std::nearbyint(static_cast<double>(curPar[12]));
    if (!(count >= 0 && count <= 2147483647)) {
      return ReadStatus::structuralError;
    }
    curText = curText.substr(0, static_cast<std::size_t>(count));
  }
  return unlessCut(ReadStatus::itemRead);
}

ReadStatus PlainReader::readPlain(int length) {
  for (int p = 2; p <= length; ++p) {
    const float value = read_word();
    if (p > 20) {
      return unlessCut(ReadStatus::tooManyParameters);
    }
    curPar[static_cast<std::size_t>(p)] = value;
  }
  return unlessCut(ReadStatus::itemRead);
}

namespace {

std::string asLine(const std::array<float, 21>& par, const std::string& text, int words) {
  std::string line = "item";
  for (std::size_t p = 1; p < par.size(); ++p) {
    if (std::bit_cast<std::uint32_t>(par[p]) != 0) {
      line += " P" + std::to_string(p) + " " + exactNumber(par[p]);
    }
  }
  return line + " '" + text + "' up to word " + std::to_string(words) + "\n";
}

std::string asLine(ReadStatus status, int itemsInFile, const std::string& trailerNumberText,
                   const std::string& unitText) {
  return "status " + std::to_string(static_cast<int>(status)) + " at item " + std::to_string(itemsInFile) + " " +
         trailerNumberText + unitText + "\n";
}

}  // namespace

std::string walkedThrough(std::string_view file) {
  std::string result;
  PageWalker page(file);
  Item item;
  ReadStatus status = page.findItem();
  while (status == ReadStatus::itemRead) {
    page.decode(item);
    result += asLine(item.par, item.text, page.wordsRead());
    status = page.findItem();
  }
  return result + asLine(status, page.itemsInFile(), page.trailerNumberText(), page.unitText());
}

std::string readPlainly(std::string_view file) {
  std::string result;
  PlainReader reader(file);
  ReadStatus status = reader.readItem();
  while (status == ReadStatus::itemRead) {
    result += asLine(reader.curPar, reader.curText, reader.wordsRead);
    status = reader.readItem();
  }
  return result + asLine(status, reader.itemsInFile, reader.trailerNumberText, reader.unitText);
}

}  // namespace kiv::test
