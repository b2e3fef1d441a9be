#pragma once

#include <optional>
#include <string>
#include <vector>

#include "shell/kivsystem.h"

namespace kiv {

/// Reloads the names, and lets the buttons that need them follow.
void setSelectedFileButtons(KivSystem& program);

/// The button "Select file(s)": lets the module for file choice write a names file. Without the module the program
/// ends.
void cmdSelectFiles_Click(KivSystem& program);

/// The same button when something is dropped on it: files, in their order, or nullopt for what is none. The module for
/// dropped files writes the names file.
void cmdSelectFiles_OLEDragDrop(KivSystem& program, const std::optional<std::vector<std::string>>& files);

}  // namespace kiv
