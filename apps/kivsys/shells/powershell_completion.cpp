#include "apps/kivsys/shells/completions.h"

namespace kiv {
namespace {

std::string quoted(const std::string& text) {
  return "'" + escaped(text, "'", "??") + "'";
}

std::string optionLines(const CommandRow& command) {
  std::string text = "        " + quoted(command.name) + " = @(\n";
  std::string separator;
  for (const OptionRow& option : command.options) {
    for (const std::string& name : option.names) {
      text += separator + "            , @(" + quoted(name) + ", " + quoted(option.help) + ")";
      separator = "\n";
    }
  }
  return text + "\n        )\n";
}

constexpr const char* complete = R"(    function Result($name, $kind, $help) {
        [System.Management.Automation.CompletionResult]::new($name, $name, $kind, $help)
    }

    # The words up to the cursor, without the one that is being completed.
    $words = @($commandAst.CommandElements | Where-Object { $_.Extent.EndOffset -lt $cursorPosition } |
        ForEach-Object { $_.ToString() })
    $command = ''
    if ($words.Count -gt 1) { $command = $words[1] }

    if ($wordToComplete -like '-*') {
        $options[$command] | Where-Object { $_[0].StartsWith($wordToComplete) } |
            ForEach-Object { Result $_[0] 'ParameterName' $_[1] }
    } elseif ($command -eq '' -or $command -eq 'help') {
        $commands.Keys | Where-Object { $_.StartsWith($wordToComplete) } |
            ForEach-Object { Result $_ 'ParameterValue' $commands[$_] }
    } elseif ($command -eq 'completions') {
        $shells | Where-Object { $_.StartsWith($wordToComplete) } |
            ForEach-Object { Result $_ 'ParameterValue' $_ }
    }
    # Where there is no result, PowerShell offers files and folders.
}
)";

}  // namespace

std::string powershellCompletion(const CommandTable& table) {
  std::string text =
      "# Completes command lines of kivsys in PowerShell; printed by: kivsys completions powershell\n\n"
      "Register-ArgumentCompleter -Native -CommandName 'kivsys', 'kivsys.exe' -ScriptBlock {\n"
      "    param($wordToComplete, $commandAst, $cursorPosition)\n\n    $commands = [ordered]@{\n";
  for (const CommandRow& command : table.commands) {
    text += "        " + quoted(command.name) + " = " + quoted(command.help) + "\n";
  }
  CommandRow program = table.program;
  program.name.clear();
  text += "    }\n    $options = @{\n" + optionLines(program);
  for (const CommandRow& command : table.commands) {
    text += optionLines(command);
  }
  return text + "    }\n    $shells = @('" + joined(shells(), "', '") + "')\n\n" + complete;
}

}  // namespace kiv
