#include "platform/console/stop_signals.h"

#include <array>
#include <atomic>
#include <csignal>
#include <utility>

#ifndef _WIN32
#include <unistd.h>
#endif

#include "messages/message.h"

namespace kiv {
namespace {

/// A handler may do no more than set this.
std::atomic<int> noted = 0;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler may touch nothing else");
std::atomic<bool> stopped = false;
std::atomic<bool> noting = false;
std::atomic<bool> finishing = false;

constexpr int signalBase = 128;

#ifdef _WIN32

bool endsAtOnce = false;

extern "C" void note(int signal) {
  noted = signal;
  static_cast<void>(std::signal(signal, endsAtOnce ? SIG_DFL : note));  // the system has reset it
}

constexpr std::array<std::pair<int, const char*>, 3> stopping{
    {{SIGINT, "SIGINT"}, {SIGTERM, "SIGTERM"}, {SIGBREAK, "SIGBREAK"}}};

#else

extern "C" void note(int signal) {
  noted = signal;
}

/// The system sends the signal as the process itself.
extern "C" void noteOfOthers(int signal, siginfo_t* about, void* /*context*/) {
  if (about->si_code != SI_USER || about->si_pid == ::getpid()) {
    return;
  }
  if (noting) {
    noted = signal;
  } else {
    static_cast<void>(std::signal(signal, SIG_DFL));
    static_cast<void>(std::raise(signal));
  }
}

constexpr std::array<std::pair<int, const char*>, 4> stopping{
    {{SIGINT, "SIGINT"}, {SIGTERM, "SIGTERM"}, {SIGHUP, "SIGHUP"}, {SIGXFSZ, "SIGXFSZ"}}};

#endif

}  // namespace

#ifdef _WIN32

void noteStopSignals(SecondSignal second) {
  noting = true;
  endsAtOnce = second == SecondSignal::endsProgram;
  for (const auto& [signal, name] : stopping) {
    static_cast<void>(std::signal(signal, note));
  }
}

void noteFileSizeSignal() {}

void letSignalsEndReading(bool /*yes*/) {}

#else

void noteStopSignals(SecondSignal second) {
  noting = true;
  struct sigaction action {};
  action.sa_handler = note;
  action.sa_flags = SA_RESTART | (second == SecondSignal::endsProgram ? static_cast<int>(SA_RESETHAND) : 0);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction old {};
    if (::sigaction(signal, nullptr, &old) == 0 && old.sa_handler != SIG_IGN) {
      ::sigaction(signal, &action, nullptr);
    }
  }
  if (second == SecondSignal::isNoted) {
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  }
}

void noteFileSizeSignal() {
  struct sigaction action {};
  action.sa_sigaction = noteOfOthers;
  action.sa_flags = SA_SIGINFO | SA_RESTART;
  ::sigaction(SIGXFSZ, &action, nullptr);
}

void letSignalsEndReading(bool yes) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action {};
    if (::sigaction(signal, nullptr, &action) == 0) {
      action.sa_flags = yes ? action.sa_flags & ~SA_RESTART : action.sa_flags | SA_RESTART;
      ::sigaction(signal, &action, nullptr);
    }
  }
}

#endif

int stopSignal() {
  return noted;
}

std::string signalName(int signal) {
  for (const auto& [number, name] : stopping) {
    if (number == signal) {
      return name;
    }
  }
  return "signal " + std::to_string(signal);
}

void finishWhenStopped() {
  finishing = true;
}

void endIfStopped() {
  if (noted != 0 && !finishing && !stopped.exchange(true)) {
    throw ProgramEnd{signalBase + noted};
  }
}

bool hasStopped() {
  return stopped;
}

}  // namespace kiv
