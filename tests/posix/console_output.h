#pragma once

#include <array>
#include <cstdio>
#include <stdexcept>
#include <string>

#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "platform/console/console_host.h"
#include "platform/posix/posix_files.h"

namespace kiv::test {

/// While it lives, standard error is another file.
class StandardErrorTo {
 public:
  explicit StandardErrorTo(const Descriptor& file) : before_(::dup(STDERR_FILENO)) {
    std::fflush(stderr);
    ::dup2(file.number(), STDERR_FILENO);
  }
  StandardErrorTo(const StandardErrorTo&) = delete;
  StandardErrorTo& operator=(const StandardErrorTo&) = delete;
  ~StandardErrorTo() {
    std::fflush(stderr);
    ::dup2(before_.number(), STDERR_FILENO);
  }

 private:
  Descriptor before_;
};

inline std::string readAvailable(const Descriptor& file) {
  constexpr int timeout = 10'000;  // milliseconds
  pollfd arrival{file.number(), POLLIN, 0};
  if (::poll(&arrival, 1, timeout) <= 0) {
    return "";
  }
  std::array<char, 4096> buffer{};
  const ssize_t got = ::read(file.number(), buffer.data(), buffer.size());
  return {buffer.data(), static_cast<std::size_t>(got > 0 ? got : 0)};
}

/// What a console user writes to a standard error that is a pipe.
template <typename Use>
std::string throughAPipe(Use use) {
  int ends[2] = {-1, -1};
  if (::pipe(ends) != 0) {
    throw std::runtime_error("no pipe");
  }
  const Descriptor out(ends[0]);
  {
    const Descriptor in(ends[1]);
    const StandardErrorTo redirected(in);
    ConsoleHost host;
    use(host.user());
  }
  return readAvailable(out);
}

/// What a console user writes to a standard error that is a terminal.
template <typename Use>
std::string onATerminal(Use use) {
  constexpr char endOfText = '\x04';
  int keeper = -1;
  int user = -1;
  if (::openpty(&keeper, &user, nullptr, nullptr, nullptr) != 0) {
    throw std::runtime_error("no terminal");
  }
  const Descriptor out(keeper);
  const Descriptor in(user);
  termios settings{};
  ::tcgetattr(user, &settings);
  ::cfmakeraw(&settings);
  ::tcsetattr(user, TCSANOW, &settings);
  {
    const StandardErrorTo redirected(in);
    ConsoleHost host;
    use(host.user());
    PosixSystem::writeError(std::string(1, endOfText));
  }
  std::string text;
  while (text.find(endOfText) == std::string::npos) {
    const std::string more = readAvailable(out);  // a terminal gives what has come so far
    if (more.empty()) {
      throw std::runtime_error("the terminal is silent");
    }
    text += more;
  }
  return text.substr(0, text.find(endOfText));
}

inline Message message(Icon icon, const std::string& text, Buttons buttons = Buttons::ok) {
  Message message;
  message.icon = icon;
  message.buttons = buttons;
  message.text = text;
  return message;
}

inline void inform(ConsoleUser& user, const std::string& text) {
  user.show(message(Icon::information, text));
}

}  // namespace kiv::test
