#pragma once

#include <string>

#include "shell/kivsystem.h"

namespace kiv {

/// The folder in the answer file: its last line that is neither empty nor a comment, without blanks at its end; ""
/// when there is none.
std::string SetFolderResult(Files& files, const std::string& folderAnswerFile);

/// A click into the name of the first result: lets the module for folder choice give another folder. Without module or
/// answer the name stays, after a message.
void txtFirstResultFile_Click(KivSystem& program);

}  // namespace kiv
