#include "fuzz/support/raw_page.h"

#include "base/bytes.h"
#include "mus/format.h"
#include "mus/page_encoding.h"

namespace kiv::fuzz {

std::string RawPage::bytes() const {
  std::string content(headerBytes, '\0');
  for (const RawItem& item : items) {
    const std::size_t words = item.par.size() + item.chunks.size() / bytesPerWord;
    content += wordBytes(static_cast<float>(words) + item.lengthError);
    for (const float number : item.par) {
      content += wordBytes(number);
    }
    content += item.chunks;
  }
  content += standardTrailer();
  const std::size_t words = content.size() / bytesPerWord;
  const auto header = static_cast<unsigned>(static_cast<int>(words) + headerError);
  content[0] = static_cast<char>(header & 0xFFU);
  content[1] = static_cast<char>(header >> 8U & 0xFFU);
  for (const auto& [index, number] : changed) {
    putWord(number, content.data() + headerBytes + bytesPerWord * (index % words));
  }
  content.resize(content.size() - bytesCut % content.size());
  return content;
}

}  // namespace kiv::fuzz
