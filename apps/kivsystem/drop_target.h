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

/// The receiver of drops on a control.
struct DropReceiver {
  std::function<bool()> isReady;  ///< whether a drop would be accepted now
  /// Receives a drop. The other program waits until this returns, so it must not run long.
  std::function<void(DroppedFiles)> dropped;
};

/// Lets a control accept drops until this is destroyed.
class DropTarget {
 public:
  DropTarget(HWND control, DropReceiver receiver);
  DropTarget(const DropTarget&) = delete;
  DropTarget& operator=(const DropTarget&) = delete;
  ~DropTarget();

 private:
  HWND control_;
  std::unique_ptr<IDropTarget, void (*)(IDropTarget*)> target_;
};

}  // namespace kiv
