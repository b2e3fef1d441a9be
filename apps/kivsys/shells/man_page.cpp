#include "apps/kivsys/shells/man_page.h"

#include <sstream>

#include "shell/version.h"

namespace kiv {
namespace {

constexpr const char* examplesBegin = "Example";

/// Text that means nothing to the formatter. Hyphens stay what a shell understands.
std::string roff(const std::string& text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '\\':
        result += "\\e";
        break;
      case '-':
        result += "\\-";
        break;
      case '\'':
        result += "\\(aq";
        break;
      case '`':
        result += "\\(ga";
        break;
      case '^':
        result += "\\(ha";
        break;
      case '~':
        result += "\\(ti";
        break;
      case '"':
        result += "\\(dq";
        break;
      default:
        result += c;
    }
  }
  return result.starts_with('.') ? "\\&" + result : result;
}

std::string bold(const std::string& text) {
  return "\\fB" + roff(text) + "\\fR";
}

std::string italic(const std::string& text) {
  return "\\fI" + roff(text) + "\\fR";
}

/// The paragraphs of a footer; lines that begin with two blanks are preformatted. Returns those under the heading of
/// the examples, or those above it.
std::string footerText(const std::string& footer, bool examples) {
  std::istringstream lines(footer);
  std::string text;
  bool asIs = false;
  bool inExamples = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(examplesBegin)) {
      inExamples = true;
      continue;
    }
    if (inExamples != examples) {
      continue;
    }
    const bool wasAsIs = asIs;
    asIs = line.starts_with("  ");
    if (asIs != wasAsIs) {
      text += asIs ? ".RS 4\n.nf\n" : ".fi\n.RE\n";
    }
    if (line.empty()) {
      text += ".PP\n";
    } else {
      text += roff(asIs ? line.substr(2) : line) + "\n";
    }
  }
  text += asIs ? ".fi\n.RE\n" : "";
  return text.ends_with(".PP\n") ? text.substr(0, text.size() - 4) : text;
}

std::string usageOf(const CommandRow& command) {
  std::string usage = bold("kivsys " + command.name) + " [" + italic("OPTION") + "]...";
  for (const OptionRow& option : command.options) {
    usage += option.required ? " " + bold(option.names.back()) + " " + italic(option.value) : "";
  }
  for (const OperandRow& operand : command.operands) {
    const std::string value = italic(operand.value) + (operand.many ? "..." : "");
    usage += " " + (operand.required ? value : "[" + value + "]");
  }
  return usage;
}

std::string optionText(const OptionRow& option) {
  std::string names;
  for (const std::string& name : option.names) {
    names += (names.empty() ? "" : ", ") + bold(name);
  }
  return ".TP\n" + names + (option.value.empty() ? "" : " " + italic(option.value)) + "\n" + roff(option.help) +
         (option.required ? " (required)" : "") + "\n";
}

std::string commandText(const CommandRow& command) {
  std::string text = ".SS " + roff(command.name) + "\n" + usageOf(command) + "\n.PP\n" + roff(command.help) + ".\n";
  const std::string more = footerText(command.footer, false);
  text += more.empty() ? "" : ".PP\n" + more;
  for (const OperandRow& operand : command.operands) {
    text += ".TP\n" + italic(operand.value) + "\n" + roff(operand.help) + "\n";
  }
  for (const OptionRow& option : command.options) {
    text += optionText(option);
  }
  return text;
}

constexpr const char* statuses = R"(.SH "EXIT STATUS"
.TP
.B 0
done
.TP
.B 1
a critical end: a message ended the run, a page was skipped (\fB\-\-keep\-going\fR) or could not be sorted, a
conversion is not correct (\fBverify\fR, \fBconvert \-\-verify\fR), a folder could not be listed (\fBsurvey\fR), or
something could not be read or written
.TP
.B 2
wrong usage: a command line that cannot be understood, pages, file names or corrections that cannot be used, or an input
that would be overwritten; nothing was written
.TP
.B 3
not usable as it stands: the pages need a conversion (\fBanalyze \-\-exit\-code\fR), a piece does or is
bad (\fBsurvey \-\-exit\-code\fR), or there are warnings or problems (\fB\-\-strict\fR)
.TP
.B 4
somebody else is at work: another run in a folder that the command writes into, or another survey with the
file of \fB\-\-resume\fR
.TP
.B "128 + n"
signal n ended the run: 129 after \fBHUP\fR, 130 after Ctrl-C (\fBINT\fR), 143 after \fBTERM\fR
.SH FILES
.TP
.I KivSystem1.TXT
the verdict of an analysis, two lines
.TP
.I KivSystem2.TXT
the report of an analysis, with one record for each staff
.TP
.I KivSystemDump.txt
what \fBtrace\fR writes: the items of the last system, and what is known about every instrument
.PP
These three are in the current folder, or in that of \fB\-\-folder\fR.
.TP
.I .kivsys
a hidden folder beside files that a run has replaced, with the old ones, from which \fBundo\fR restores them; the
next run there removes what it can no longer undo
.TP
.I $XDG_STATE_HOME/kivsys
the journals for \fBundo\fR, in
.I ~/.local/state/kivsys
if XDG_STATE_HOME is not set, on Windows in
.I %LOCALAPPDATA%\eKivSystem
.SH ENVIRONMENT
.TP
.B NO_COLOR
when it is set and not empty, text on a terminal is not colored
.TP
.B TMPDIR
the folder for temporary files, instead of
.I /tmp
.TP
.B XDG_STATE_HOME
the folder of programs' state, in which the journals for \fBundo\fR are
.SH EXAMPLES
)";

std::string nameText(const CommandTable& table) {
  std::string help = table.program.help;
  const bool stopped = help.ends_with('.');
  help = help.substr(0, help.size() - (stopped ? 1 : 0));
  if (help.starts_with('P')) {
    help[0] = 'p';
  }
  return ".SH NAME\nkivsys \\- " + roff(help) + "\n";
}

}  // namespace

std::string manPage(const CommandTable& table) {
  const std::string version =
      std::to_string(version::major) + "." + std::to_string(version::minor) + "." + std::to_string(version::revision);
  std::string text = R"(.TH KIVSYS 1 "" "kivsys )" + version + R"(" "User Commands")" + "\n.nh\n.ad l\n" +
                     nameText(table) + ".SH SYNOPSIS\n.nf\n";
  for (const CommandRow& command : table.commands) {
    text += usageOf(command) + "\n";
  }
  text += ".fi\n.SH DESCRIPTION\n" + roff(table.program.help) + "\n.PP\n" + footerText(table.program.footer, false) +
          ".SH OPTIONS\n";
  for (const OptionRow& option : table.program.options) {
    text += optionText(option);
  }
  text += ".SH COMMANDS\n";
  for (const CommandRow& command : table.commands) {
    text += commandText(command);
  }
  text += statuses;
  for (const CommandRow& command : table.commands) {
    text += footerText(command.footer, true);
  }
  return text;
}

}  // namespace kiv
