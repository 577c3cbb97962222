#pragma once

#include <functional>

namespace quorvi::test {

// Runs checks in a process of their own, whose mounts and limits and user may be changed.
void inAProcessOfItsOwn(const std::function<void()>& checks);

// Gives the process mounts of its own; false when it may not.
bool makeOwnMounts();

// Gives up what lets root pass by the permissions of files.
void obeyPermissions();

}  // namespace quorvi::test
