#pragma once

namespace kiv {

/// Whether this is an x86 processor with instructions for SHA-256, and the others that go with them.
bool isX86WithSha256();

}  // namespace kiv
