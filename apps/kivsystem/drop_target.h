#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/win32/windows_api.h"

struct IDropTarget;

namespace kiv {

/// The files of a drop, in their order; nullopt when what was dropped is no list of files.
using DroppedFiles = std::optional<std::vector<std::string>>;

/// Lets a control take drops until this is destroyed. A drop is handed on while the other program still waits for it
/// to be taken, so its receiver must not run long.
class DropTarget {
 public:
  DropTarget(HWND control, std::function<void(DroppedFiles)> dropped);
  DropTarget(const DropTarget&) = delete;
  DropTarget& operator=(const DropTarget&) = delete;
  ~DropTarget();

 private:
  HWND control_;
  std::unique_ptr<IDropTarget, void (*)(IDropTarget*)> target_;
};

}  // namespace kiv
