#pragma once

#include <sys/types.h>
#include <string>

namespace quorvi {

// The name of the program that a process runs, cut at 15 bytes by the kernel. Empty if there is no
// such process. Any thread.
std::string processName(pid_t pid);

}  // namespace quorvi
