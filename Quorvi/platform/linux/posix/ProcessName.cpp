#include "Quorvi/platform/linux/posix/ProcessName.h"

#include <fstream>

namespace quorvi {

std::string processName(pid_t pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

}  // namespace quorvi
