#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// Local date and time of day, 24 hours.
struct LocalTime {
  int year = 0;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

/// The clock, the user's profile, and the characters of the machine's code page.
class Machine {
 public:
  Machine() = default;
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;
  virtual ~Machine() = default;

  virtual LocalTime now() = 0;
  /// Upper case as the platform maps the code page; what has no capital stays.
  virtual std::string upperCase(std::string_view text) = 0;
  /// The number of characters in the bytes of a text.
  virtual std::size_t characterCount(std::string_view text) = 0;
  /// Whether the byte begins a character of two bytes. False in code pages in which a byte of a longer character is
  /// never that of an ASCII character, as in UTF-8.
  virtual bool isLeadByte(char /*byte*/) { return false; }
  /// The key's value in section [KIV] of the user's profile, at most 31 characters, "" when absent.
  virtual std::string profileKey(const std::string& key) = 0;
};

}  // namespace kiv
