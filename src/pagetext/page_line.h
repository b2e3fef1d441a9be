#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

/// The first thing that is wrong with a line; what goes wrong after it is its consequence.
class Complaint {
 public:
  void make(std::string reason) {
    if (reason_.empty()) {
      reason_ = std::move(reason);
    }
  }
  bool made() const { return !reason_.empty(); }
  const std::string& reason() const { return reason_; }

 private:
  std::string reason_;
};

/// One word of a line, or a text in quotes.
struct Token {
  std::string text;
  bool quoted = false;
};

/// Takes the words of one line from the front. Once there is a complaint, there are no more words.
class Words {
 public:
  /// Splits the line. The complaint must outlive the words.
  Words(std::string_view line, Complaint& complaint);

  bool empty() const { return complaint_.made() || next_ == tokens_.size(); }
  std::size_t left() const { return tokens_.size() - next_; }
  const Token& peek(std::size_t ahead = 0) const { return tokens_[next_ + ahead]; }
  /// The next word. A line that has none is complained of: what is missing.
  Token take(std::string_view what);
  /// The next word as a number; 0 with a complaint when it is none.
  float number(std::string_view what);
  /// The next word as a byte of two hexadecimal digits; 0 with a complaint when it is none.
  char byte();
  void skip(std::size_t count) { next_ += count; }
  /// Complains of words that are left.
  void expectEnd() const;
  void complain(std::string reason) const { complaint_.make(std::move(reason)); }

 private:
  Complaint& complaint_;
  std::vector<Token> tokens_;
  std::size_t next_ = 0;
};

}  // namespace kiv
