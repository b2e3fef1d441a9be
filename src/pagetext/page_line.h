#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

/// The first error of a line; those after it are its consequences.
class LineError {
 public:
  void set(std::string reason) {
    if (reason_.empty()) {
      reason_ = std::move(reason);
    }
  }
  bool isSet() const { return !reason_.empty(); }
  const std::string& reason() const { return reason_; }

 private:
  std::string reason_;
};

/// One word of a line, or a text in quotes.
struct Token {
  std::string text;
  bool quoted = false;
};

/// Reads the words of one line from the front. After the first error there are no more words.
class Words {
 public:
  /// Splits the line. The error must outlive the words.
  Words(std::string_view line, LineError& error);

  bool empty() const { return error_.isSet() || index_ == tokens_.size(); }
  std::size_t left() const { return tokens_.size() - index_; }
  const Token& peek(std::size_t ahead = 0) const { return tokens_[index_ + ahead]; }
  /// The next word. It is an error when there is none; what names the word that is missing.
  Token next(std::string_view what);
  /// The next word as a number; 0 and an error when it is none.
  float number(std::string_view what);
  /// The next word as a byte of two hexadecimal digits; 0 and an error when it is none.
  char byte();
  void skip(std::size_t count) { index_ += count; }
  /// It is an error when words are left.
  void expectEnd() const;
  void fail(std::string reason) const { error_.set(std::move(reason)); }

 private:
  LineError& error_;
  std::vector<Token> tokens_;
  std::size_t index_ = 0;  // of the next token
};

}  // namespace kiv
