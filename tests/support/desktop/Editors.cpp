#include "tests/support/desktop/Editors.h"

namespace quorvi::test {

Command chromium(const std::string& body, const TestFolder& folder) {
    const auto page =
        folder.write("page.html", "<!doctype html><meta charset=utf-8><title>Page</title>" + body);
    return {"chromium",
            "--no-sandbox",
            "--force-renderer-accessibility",
            "--disable-gpu",
            "--no-first-run",
            "--password-store=basic",  // else an installed keyring asks for a password, with a grab
            "--disable-background-networking",
            "--user-data-dir=" + folder.path().string(),
            "file://" + page};
}

}  // namespace quorvi::test
