// Fault numbers for what the operating system says in `errno`.
#pragma once

#include "platform/filesystem.h"

namespace kalvora {

// 0 for 0; 53 for ENOENT, which path_fault() makes a 76 when the folder itself is missing.
Fehlercode fault_of(int error);

} // namespace kalvora
