// Makes the bytes of a seed from its readable form: a page from its text (*.page), or any bytes from hexadecimal
// numbers (*.hex), with comments from a "*" to the end of its line.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <string_view>
#include <variant>

#include "pagetext/page_text.h"

namespace {

[[noreturn]] void fail(const std::string& reason) {
  std::cerr << "make_seed: " << reason << '\n';
  std::exit(1);
}

std::string pageOf(const std::string& text) {
  const auto built = kiv::buildPage(text);
  if (const auto* error = std::get_if<kiv::PageTextError>(&built)) {
    fail("line " + std::to_string(error->line) + ": " + error->reason);
  }
  return std::get<std::string>(built);
}

std::string bytesOf(const std::string& listing) {
  std::string bytes;
  std::istringstream words(listing);
  std::string word;
  while (words >> word) {
    if (word.starts_with('*')) {
      std::getline(words, word);
    } else if (word.size() == 2 && word.find_first_not_of("0123456789ABCDEF") == std::string::npos) {
      bytes.push_back(static_cast<char>(std::stoi(word, nullptr, 16)));
    } else {
      fail("\"" + word + "\" is not a byte");
    }
  }
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    fail("usage: make_seed SEED FILE_FOR_ITS_BYTES");
  }
  const std::string_view name = argv[1];
  std::ifstream in(argv[1], std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  std::ofstream out(argv[2], std::ios::binary);
  out << (name.ends_with(".page") ? pageOf(text.str()) : name.ends_with(".hex") ? bytesOf(text.str()) : text.str());
  out.close();
  return in && out ? 0 : 1;
}
