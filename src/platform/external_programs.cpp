#include "platform/external_programs.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "messages/run_time_errors.h"
#include "messages/shell_messages.h"
#include "platform/separators.h"

namespace kiv {
namespace {

constexpr std::size_t profileCharacters = 31;

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

WindowStyle windowStyleOf(std::string_view upperCommand) {
  constexpr std::array<std::string_view, 4> viewers = {"NOTEPAD.EXE", "WORDPAD.EXE", "WINHELP.EXE", "CLIPBRD.EXE"};
  const bool viewer =
      std::any_of(viewers.begin(), viewers.end(), [&](std::string_view name) { return contains(upperCommand, name); });
  return viewer ? WindowStyle::maximized : WindowStyle::normal;
}

std::string afterLastBackslash(Machine& machine, const std::string& path) {
  return path.substr(lastBackslash(machine, path) + 1);
}

/// The command without the folder of its program; nullopt when it names no program.
std::optional<std::string> bareCommand(Machine& machine, const std::string& cmd, const std::string& upperCommand) {
  constexpr std::string_view program = ".EXE";
  const std::size_t dot = upperCommand.find(program);
  if (dot == std::string::npos) {
    return std::nullopt;
  }
  const std::size_t end = dot + program.size();
  return afterLastBackslash(machine, cmd.substr(0, end)) + cmd.substr(end);
}

}  // namespace

std::string GetProfileKey(Machine& machine, const std::string& key) {
  return machine.profileKey(key).substr(0, profileCharacters);
}

std::int32_t ExecCmd(const Host& host, const std::string& cmdline) {
  const bool notepad = contains(host.machine.upperCase(cmdline), "NOTEPAD.EXE");
  const std::int32_t result =
      host.programs.runProcess(cmdline, notepad ? ShowState::maximized : ShowState::leftToTheSystem);
  if (result == -1) {
    host.user.show(messages::programNotStarted(cmdline));
  }
  return result;
}

std::optional<ShellFailure> tryShellAndWait(const Host& host, const std::string& cmd) {
  const std::string upper = host.machine.upperCase(cmd);
  if (const auto command = bareCommand(host.machine, cmd, upper)) {
    return host.programs.runInShell(*command, windowStyleOf(upper));
  }
  if (!contains(upper, ".BAT")) {
    endProgram(messages::notACommand(cmd));
  }
  ExecCmd(host, cmd);
  return std::nullopt;
}

void ShellAndWait(const Host& host, const std::string& cmd) {
  if (const auto failure = tryShellAndWait(host, cmd)) {
    const auto command = bareCommand(host.machine, cmd, host.machine.upperCase(cmd));
    endProgram(messages::platformFailure(failure->text, command.value_or(cmd)));
  }
}

std::string GetShortName(Files& files, const std::string& path) {
  return files.shortName(path).value_or(path);
}

std::string GetLongName(const Host& host, const std::string& path) {
  const std::size_t backslash = lastBackslash(host.machine, path);
  if (backslash == std::string::npos) {
    return "";
  }
  const std::string folder = path.substr(0, backslash + 1);
  const std::string name = path.substr(backslash + 1);
  for (const FolderEntry& entry : host.files.listFolder(folder)) {
    if (entry.name == "." || entry.name == "..") {
      continue;
    }
    if (host.machine.upperCase(entry.name) == "DIR.BAS") {
      host.user.processEvents();
    }
    std::string longName = folder + entry.name;
    if (entry.isFolder) {
      continue;
    }
    const std::string shortName = afterLastBackslash(host.machine, GetShortName(host.files, longName));
    if (host.machine.upperCase(shortName) == name) {
      return longName;
    }
  }
  return "";
}

}  // namespace kiv
