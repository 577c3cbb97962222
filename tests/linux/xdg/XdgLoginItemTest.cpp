// The login item on real folders, as the desktop's other programs read and write them.

#include "Quorvi/platform/linux/xdg/XdgLoginItem.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "QuorviCore/Error.h"
#include "tests/support/Paths.h"
#include "tests/support/Process.h"
#include "tests/support/Waiting.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;
using Status = LoginItemStatus;

struct XdgLoginItemTest : testing::Test {
    // A program and its entry in the menus, installed under the folder.
    void install(const std::string& program, const std::string& command) {
        fs::create_directories((root / program).parent_path());
        fs::create_directories(root / "share/applications");
        write(program, "#!/bin/sh\nprintf 'started %s\\n' \"$0\"\n");
        fs::permissions(root / program, fs::perms::owner_all);
        write("share/applications/app.quorvi.Quorvi.desktop",
              "[Desktop Entry]\nType=Application\nName=Quorvi\nExec=" + command + "\n");
        places.executable = root / program;
        places.configuration = root / "config";
        places.applicationRoots = {root / "share"};
        places.desktops = "Budgie:GNOME";
        places.searchPath = (root / "bin").string() + ":/usr/bin:/bin";
    }
    void write(const std::string& name, const std::string& content) { folder.write(name, content); }
    XdgLoginItem item() const { return XdgLoginItem(places); }
    std::string entry() const { return contentOf(autostart()); }
    fs::path autostart() const { return root / "config/autostart/quorvi.desktop"; }

    TestFolder folder;
    const fs::path root = folder.path();
    XdgLoginItem::Places places;
};

TEST_F(XdgLoginItemTest, WritesAnEntryThatTheDesktopStarts) {
    // Whatever the folder is called. (GLib itself starts nothing with a "%" in its path.)
    for (const std::string name : {"bin/quorvi", "My $HOME `x`/\"q\" \\n/quorvi"}) {
        install(name, "quorvi %U");
        fs::create_directories(root / "bin");
        if (name != "bin/quorvi") fs::create_symlink(root / name, root / "bin/quorvi");
        fs::create_directories(autostart().parent_path());
        fs::permissions(autostart().parent_path(), fs::perms{0755});
        auto login = item();
        EXPECT_EQ(login.status(), Status::notRegistered) << name;
        login.registerItem();
        EXPECT_EQ(login.status(), Status::enabled) << name;
        EXPECT_EQ(fs::status(autostart().parent_path()).permissions(), fs::perms{0755});
        EXPECT_EQ(shell("desktop-file-validate '" + autostart().string() + "' 2>&1"), "") << name;
        // GLib's own reader of entries, as desktops use it.
        Process starter({"gio", "launch", autostart()});
        EXPECT_EQ(starter.readLine(), "started " + (root / name).string());
        login.unregisterItem();
        EXPECT_FALSE(fs::exists(autostart()));
        EXPECT_EQ(login.status(), Status::notRegistered);
        fs::remove_all(root / "bin");
    }
}

// An administrator who copies the template for everybody has what each user's own setting would
// write.
TEST_F(XdgLoginItemTest, WritesWhatTheInstalledTemplateHolds) {
    install("bin/quorvi", "quorvi");
    item().registerItem();
    auto wanted = contentOf(sourceFolder() + "/Quorvi/app/quorvi.desktop.in");
    const std::string placeholder = "@QUORVI_EXECUTABLE@";
    for (std::size_t at; (at = wanted.find(placeholder)) != wanted.npos;)
        wanted.replace(at, placeholder.size(), places.executable.string());
    EXPECT_EQ(entry(), wanted);
}

TEST_F(XdgLoginItemTest, ReadsWhatTheUserDecidedElsewhere) {
    install("bin/quorvi", "quorvi");
    auto login = item();
    login.registerItem();
    const auto ours = entry();
    const std::string start = "[Desktop Entry]\nType=Application\nName=Quorvi\nExec=quorvi\n";
    const std::pair<std::string, Status> rows[] = {
        {start + "Hidden=true\n", Status::requiresApproval},
        {start + "X-GNOME-Autostart-enabled=false\n", Status::requiresApproval},
        {start + "OnlyShowIn=KDE;XFCE;\n", Status::requiresApproval},
        {start + "NotShowIn=KDE;GNOME;\n", Status::requiresApproval},
        {start + "OnlyShowIn=GNOME;\n", Status::enabled},
        {"[Desktop Entry]\nType=Application\nName=Quorvi\nExec=/gone/quorvi\n",
         Status::notRegistered},
        {"[Desktop Entry]\nType=Application\nName=Quorvi\nExec=\"broken\n", Status::notRegistered},
        {"no entry at all", Status::unknown},
        {ours, Status::enabled}};
    for (const auto& [content, status] : rows) {
        write("config/autostart/quorvi.desktop", content);
        EXPECT_EQ(login.status(), status) << content;
    }
}

TEST_F(XdgLoginItemTest, OnlyAnInstalledCopyCanBeRegistered) {
    install("bin/quorvi", "quorvi");
    fs::create_directories(root / "build");
    fs::copy_file(root / "bin/quorvi", root / "build/quorvi");
    places.executable = root / "build/quorvi";
    auto copy = item();
    EXPECT_EQ(copy.status(), Status::notFound);
    EXPECT_THROW(copy.registerItem(), QuorviError);
    EXPECT_FALSE(fs::exists(autostart()));
}

TEST_F(XdgLoginItemTest, OpensTheDesktopsSettingsOrSaysThatThereAreNone) {
    install("bin/quorvi", "quorvi");
    places.searchPath = root / "bin";
    EXPECT_THROW(item().openSettings(), QuorviError);
    write("bin/gnome-tweaks", "#!/bin/sh\n: > '" + (root / "opened").string() + "'\n");
    fs::permissions(root / "bin/gnome-tweaks", fs::perms::owner_all);
    item().openSettings();
    EXPECT_TRUE(eventually([&] { return fs::exists(root / "opened"); }));
}

}  // namespace
}  // namespace quorvi::test
