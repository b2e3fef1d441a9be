#pragma once

#ifdef _WIN32
#include "platform/win32/win32_system.h"
#else
#include "platform/posix/posix_system.h"
#endif

namespace kiv {

/// Files, programs and clock of the platform of the build.
#ifdef _WIN32
using NativeSystem = Win32System;
#else
using NativeSystem = PosixSystem;
#endif

}  // namespace kiv
