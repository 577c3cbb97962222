#pragma once

#include <functional>

#include "Quorvi/platform/linux/gio/GLibHandles.h"

namespace quorvi {

// Waits for input in the default GLib context of the thread that creates and destroys it.
class DescriptorSource {
public:
    // `readable` is called whenever the descriptor can be read or is closed, until it returns
    // false. It may destroy the source.
    DescriptorSource(int descriptor, std::function<bool()> readable);
    ~DescriptorSource();
    DescriptorSource(const DescriptorSource&) = delete;
    DescriptorSource& operator=(const DescriptorSource&) = delete;

private:
    const GLibHandle<GSource> source_;
};

}  // namespace quorvi
