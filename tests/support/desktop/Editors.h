#pragma once

#include <string>
#include <vector>

#include "tests/support/TestFolder.h"

// The command lines of the applications that tests dictate into, each in a process of its own.
namespace quorvi::test {

using Command = std::vector<std::string>;

inline Command mousepad(const std::string& file) {
    return {"mousepad", "--disable-server", file};
}
inline Command gnomeTextEditor(const std::string& file) {
    return {"gnome-text-editor", "--standalone", file};
}
inline Command featherpad(const std::string& file) {
    return {"featherpad", "--standalone", file};
}

// A page with this body, in a browser with a profile below the folder.
inline Command chromium(const std::string& body, const TestFolder& folder) {
    const auto page =
        folder.write("page.html", "<!doctype html><meta charset=utf-8><title>Page</title>" + body);
    return {"chromium",
            "--no-sandbox",
            "--disable-gpu",
            "--no-first-run",
            "--password-store=basic",  // else an installed keyring asks for a password, with a grab
            "--disable-background-networking",
            "--user-data-dir=" + folder.path().string(),
            "file://" + page};
}

}  // namespace quorvi::test
