#pragma once

#include <unistd.h>

namespace quorvi {

// An open file descriptor, closed with the object; negative when there is none.
class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (value_ >= 0) ::close(value_);
    }
    int get() const { return value_; }
    explicit operator bool() const { return value_ >= 0; }

private:
    const int value_;
};

}  // namespace quorvi
