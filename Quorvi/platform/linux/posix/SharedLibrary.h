#pragma once

#include <string>

namespace quorvi {

// A library that is loaded when it is first needed rather than with the program, because it and
// what comes with it take megabytes. Never unloaded again: some leave threads and thread-specific
// data behind. Any thread.
class SharedLibrary {
public:
    // Loads it (milliseconds). `name` is as in "libcurl", `version` the number of its interface.
    // Throws std::runtime_error with the loader's words.
    SharedLibrary(const std::string& name, int version);

    // Looks a function up, in what the library depends on, too. Throws std::runtime_error.
    template <class Function>
    void find(const char* name, Function& function) const {
        function = reinterpret_cast<Function>(address(name));
    }

private:
    void* address(const char* name) const;

    void* handle_;
};

}  // namespace quorvi
