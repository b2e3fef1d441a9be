#include "platform/external_programs.h"

#include <algorithm>
#include <array>
#include <string_view>

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
  return viewer ? WindowStyle::maximised : WindowStyle::normal;
}

std::string behindLastBackslash(const std::string& path) {
  return path.substr(path.rfind('\\') + 1);
}

/// The command without the folder of its program; nullopt when it names no program.
std::optional<std::string> bareCommand(const std::string& cmd, const std::string& upperCommand) {
  constexpr std::string_view program = ".EXE";
  const std::size_t dot = upperCommand.find(program);
  if (dot == std::string::npos) {
    return std::nullopt;
  }
  const std::size_t end = dot + program.size();
  return behindLastBackslash(cmd.substr(0, end)) + cmd.substr(end);
}

}  // namespace

std::string GetProfileKey(Host& host, const std::string& key) {
  return host.profileKey(key).substr(0, profileCharacters);
}

std::int32_t ExecCmd(Host& host, const std::string& cmdline) {
  const bool notepad = contains(host.upperCase(cmdline), "NOTEPAD.EXE");
  const std::int32_t result = host.runProcess(cmdline, notepad ? ShowState::maximised : ShowState::leftToTheSystem);
  if (result == -1) {
    host.inform("Some problem calling " + cmdline);
  }
  return result;
}

std::optional<ShellFailure> tryShellAndWait(Host& host, const std::string& cmd) {
  const std::string upper = host.upperCase(cmd);
  if (const auto command = bareCommand(cmd, upper)) {
    return host.runInShell(*command, windowStyleOf(upper));
  }
  if (!contains(upper, ".BAT")) {
    host.fatal("ShellAndWait error: " + cmd);
  }
  ExecCmd(host, cmd);
  return std::nullopt;
}

void ShellAndWait(Host& host, const std::string& cmd) {
  if (const auto failure = tryShellAndWait(host, cmd)) {
    host.runTimeError(failure->text, bareCommand(cmd, host.upperCase(cmd)).value_or(cmd));
  }
}

std::string GetShortName(Host& host, const std::string& path) {
  return host.shortName(path).value_or(path);
}

std::string GetLongName(Host& host, const std::string& path) {
  const std::size_t backslash = path.rfind('\\');
  if (backslash == std::string::npos) {
    return "";
  }
  const std::string folder = path.substr(0, backslash + 1);
  const std::string name = path.substr(backslash + 1);
  for (const FolderEntry& entry : host.listFolder(folder)) {
    if (entry.name == "." || entry.name == "..") {
      continue;
    }
    if (host.upperCase(entry.name) == "DIR.BAS") {
      host.processEvents();
    }
    std::string longName = folder + entry.name;
    if (!entry.isFolder && host.upperCase(behindLastBackslash(GetShortName(host, longName))) == name) {
      return longName;
    }
  }
  return "";
}

}  // namespace kiv
