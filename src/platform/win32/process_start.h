#pragma once

namespace kiv {

/// Prepares this process, before anything else is done: libraries are searched for in the system's folder only, where
/// the system knows that choice, and the current folder is entered by a name that the code page can hold.
void prepareProcess();

}  // namespace kiv
