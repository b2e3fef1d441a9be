#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace kiv {

/// Text for standard output, which is printed while it grows.
class OutputText {
 public:
  void add(std::string_view text);
  /// Prints what is left.
  void flush();

 private:
  std::string pending_;
};

/// Prints the outcome on standard output and returns the status; output that cannot be printed makes it critical.
int printOutcome(std::string_view text, int status);
/// The same for a long one.
int printOutcome(const std::function<void(OutputText& text)>& addText, int status);

}  // namespace kiv
