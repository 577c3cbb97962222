#include "Quorvi/system/updates/AppUpdater.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Quorvi/platform/linux/curl/CurlDownloader.h"
#include "Quorvi/platform/linux/gio/GioUpdateInstaller.h"
#include "Quorvi/platform/linux/posix/LoopScheduler.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "tests/support/Waiting.h"
#include "tests/support/network/SignedReleases.h"
#include "tests/support/network/TlsServer.h"

namespace quorvi::test {
namespace {

namespace fs = std::filesystem;

// The updater as the application has it, against a real server and real packages. The desktop's
// package installer is a script that keeps a copy of what it is given.
class UpdateOverNetwork : public testing::Test {
protected:
    static void SetUpTestSuite() {
        authority = std::make_unique<TestAuthority>();
        authority->issue("server", "IP:127.0.0.1");
        releases = std::make_unique<SignedReleases>();
        releases->build("new", "quorvi", "2.0-1");
        releases->build("old", "quorvi", "1.0-3");
        releases->build("other", "malware", "2.0");
        releases->write("text.deb", "no package at all");
        server = std::make_unique<TlsServer>(*authority, "server", "127.0.0.1", releases->folder());
        installInstaller();
    }
    static void TearDownTestSuite() {
        server.reset();
        releases.reset();
        authority.reset();
    }

    // Programs that this machine may have for packages don't count.
    static void installInstaller() {
        setenv("XDG_DATA_DIRS", releases->folder().c_str(), 1);
        const fs::path data = getenv("XDG_DATA_HOME"), config = getenv("XDG_CONFIG_HOME");
        fs::create_directories(data / "applications");
        fs::create_directories(config);
        const auto script = releases->file("installer");
        std::ofstream(script) << "#!/bin/sh\ncp \"$1\" \"" << received().string()
                              << ".part\" && mv \"" << received().string() << ".part\" \""
                              << received().string() << "\"\n";
        fs::permissions(script, fs::perms::owner_all);
        std::ofstream(data / "applications" / "test-installer.desktop")
            << "[Desktop Entry]\nType=Application\nName=Installer\nExec=" << script.string()
            << " %f\nMimeType=application/vnd.debian.binary-package;\n";
        std::ofstream(config / "mimeapps.list")
            << "[Default Applications]\napplication/vnd.debian.binary-package="
               "test-installer.desktop\n";
    }
    static fs::path received() { return releases->file("received"); }

    void publish(const std::string& document) { releases->write("appcast.xml", document); }
    // A feed with one release, whose file is published under `path`.
    void publish(const std::string& version, const std::string& path, const std::string& file,
                 const std::string& more = {}) {
        auto item = releases->item(version, server->url(path + file), file);
        item.more = more;
        publish(feed(item));
    }
    AppUpdater& start(const std::string& feed = server->url("/files/appcast.xml")) {
        updater = std::make_unique<AppUpdater>(UpdateEnvironment{
            scheduler,
            executor,
            preferences,
            downloader,
            installer,
            {feed, releases->publicKey(), "1.5", "12", "quorvi", folder.path() / "updates"}});
        updater->showWindow = [this] { ++windows; };
        return *updater;
    }
    bool until(UpdateStage stage) {
        return test::until(scheduler, [&] { return updater->stage() == stage; });
    }
    // Files and folders below the updater's own; nothing may be left behind.
    std::vector<std::string> left() {
        std::vector<std::string> names;
        std::error_code vanished;
        for (fs::recursive_directory_iterator entry(folder.path() / "updates", vanished), end;
             !vanished && entry != end; entry.increment(vanished))
            if (entry->is_regular_file(vanished)) names.push_back(entry->path().filename());
        return names;
    }

    static inline std::unique_ptr<TestAuthority> authority;
    static inline std::unique_ptr<SignedReleases> releases;
    static inline std::unique_ptr<TlsServer> server;

    TestFolder folder;
    LoopScheduler scheduler;
    SerialExecutor executor{"updates"};
    MemoryPreferences preferences;
    CurlDownloader downloader{scheduler, authority->caFile()};
    GioUpdateInstaller installer{executor, scheduler};
    int windows = 0;
    std::unique_ptr<AppUpdater> updater;
};

TEST_F(UpdateOverNetwork, ReleaseIsFoundDownloadedVerifiedAndHandedToTheInstallerByteForByte) {
    publish("2.0", "/files/", "new.deb",
            "<description><![CDATA[<p>Faster.</p><script>alert(1)</script>]]></description>");
    fs::create_directories(folder.path() / "updates" / "7");
    std::ofstream(folder.path() / "updates" / "7" / "left over") << "x";
    auto& u = start();
    u.check();
    EXPECT_EQ(windows, 1);
    ASSERT_TRUE(until(UpdateStage::available)) << u.message().english();
    EXPECT_EQ(left(), std::vector<std::string>{});
    EXPECT_EQ(u.releaseNotes().english(), "<p>Faster.</p>");
    EXPECT_EQ(u.availableVersion(), std::nullopt);

    std::uint64_t seen = 0;
    const auto watching = u.onChange([&] {
        EXPECT_GE(u.receivedBytes(), seen);
        seen = u.receivedBytes();
    });
    u.download();
    ASSERT_TRUE(until(UpdateStage::ready)) << u.message().english();
    EXPECT_EQ(seen, fs::file_size(releases->file("new.deb")));
    for (const auto* name : {"updates", "updates/1"})
        EXPECT_EQ(fs::status(folder.path() / name).permissions(), fs::perms::owner_all) << name;
    EXPECT_FALSE(fs::exists(received()));

    u.install();
    ASSERT_TRUE(until(UpdateStage::handedOver)) << u.message().english();
    u.close();
    ASSERT_TRUE(test::until(scheduler, [] { return fs::exists(received()); }));
    EXPECT_EQ(contentOf(received()), contentOf(releases->file("new.deb")));
    EXPECT_EQ(left(), std::vector<std::string>{"quorvi-2.0.deb"}) << "the installer reads it still";
}

TEST_F(UpdateOverNetwork, WhatIsWrongWithAFeedEndsInASentence) {
    const std::string url = server->url("/files/new.deb");
    const std::vector<std::pair<std::string, Message>> rows{
        {"{\"not\": \"XML\"}", say::feedUnreadable()},
        {"<html><body>Please log in</body></html>", say::feedUnreadable()},
        {"<!DOCTYPE rss [<!ENTITY a \"aaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;\">]><rss><channel>"
         "<item><title>&b;</title></item></channel></rss>",
         say::feedHasDocumentType()},
        {feed(FeedItem{.url = url, .signature = ""}), say::updateNotSigned("2.0")},
        {feed(FeedItem{.url = "http://127.0.0.1/new.deb"}), say::updateDownloadNotSecure("2.0")},
        {feed(FeedItem{.url = url, .length = 0}), say::updateSizeUnknown("2.0")},
        {std::string(maximumAppcastBytes + 1, ' '), say::updateAnswerTooLarge()},
    };
    for (const auto& [document, sentence] : rows) {
        publish(document);
        auto& u = start();
        u.check();
        ASSERT_TRUE(until(UpdateStage::failed)) << sentence;
        EXPECT_EQ(u.message(), sentence);
    }
    for (const auto* version : {"1.0", "1.5.0", "1.5b3"}) {
        publish(version, "/files/", "old.deb");
        start().check();
        ASSERT_TRUE(until(UpdateStage::upToDate)) << version;
        EXPECT_EQ(updater->message(), say::updateNewest("1.5"));
    }
}

TEST_F(UpdateOverNetwork, WhatIsWrongWithTheServerEndsInASentence) {
    publish("2.0", "/files/", "new.deb");
    const auto peer = Sentence::updateServer;
    const std::vector<std::pair<std::string, Message>> rows{
        {server->url("/to?http://127.0.0.1:1/appcast.xml"), say::updateRedirectNotSecure()},
        {server->url("/missing"), say::updateServerError(404)},
        {"https://127.0.0.1:1/", say::serverRefused(peer)},
        {"https://nowhere.invalid/", say::serverNotFound(peer)},
        {"http://127.0.0.1:1/", say::updatesNotConfigured()},
        {"", say::updatesNotConfigured()},
    };
    for (const auto& [feed, sentence] : rows) {
        start(feed).check();
        ASSERT_TRUE(until(UpdateStage::failed)) << feed;
        EXPECT_EQ(updater->message(), sentence);
    }
    start(server->url("/to?" + server->url("/files/appcast.xml"))).check();
    EXPECT_TRUE(until(UpdateStage::available)) << "a redirect that stays secure is followed";

    CurlDownloader distrustful(scheduler);
    Running<Bytes> fetching(distrustful.fetch(server->url("/files/appcast.xml"), 1000, {}));
    ASSERT_TRUE(await(scheduler, fetching));
    EXPECT_EQ(fetching.failure(), say::serverCertificateInvalid(peer).english());
}

TEST_F(UpdateOverNetwork, PackageThatIsNotWhatWasSignedIsRefusedAndGone) {
    const auto of = [&](const std::string& path, const std::string& name) {
        return releases->item("2.0", server->url(path), name);
    };
    auto wrongSignature = of("/files/new.deb", "new.deb"), tooShort = wrongSignature,
         tooLong = wrongSignature;
    wrongSignature.signature = releases->signatureOf("other.deb");
    ++tooShort.length;
    --tooLong.length;
    const std::vector<std::pair<FeedItem, Message>> rows{
        {wrongSignature, say::updateSignatureInvalid("2.0")},
        {of("/half/new.deb", "new.deb"), say::serverConnectionLost(Sentence::updateServer)},
        {tooShort, say::updateTooSmall()},
        {tooLong, say::updateTooLarge()},
        {of("/to?http://127.0.0.1:1/new.deb", "new.deb"), say::updateRedirectNotSecure()},
        {of("/files/gone.deb", "new.deb"), say::updateServerError(404)},
        {of("/files/old.deb", "old.deb"), say::updateNotNewer("2.0")},
        {of("/files/other.deb", "other.deb"), say::updateNotQuorvi()},
        {of("/files/text.deb", "text.deb"), say::updateNotAPackage()},
    };
    for (const auto& [item, sentence] : rows) {
        publish(feed(item));
        auto& u = start();
        u.check();
        ASSERT_TRUE(until(UpdateStage::available)) << sentence;
        u.download();
        ASSERT_TRUE(until(UpdateStage::failed)) << sentence;
        EXPECT_EQ(u.message(), sentence);
        EXPECT_EQ(left(), std::vector<std::string>{}) << sentence;
    }
}

TEST_F(UpdateOverNetwork, PackageThatIsExchangedWhileTheUserThinksIsNotHandedOver) {
    publish("2.0", "/files/", "new.deb");
    auto& u = start();
    u.check();
    ASSERT_TRUE(until(UpdateStage::available));
    u.download();
    ASSERT_TRUE(until(UpdateStage::ready)) << u.message().english();
    fs::remove(received());
    const auto file = folder.path() / "updates" / "1" / "quorvi-2.0.deb";
    fs::copy_file(releases->file("other.deb"), file, fs::copy_options::overwrite_existing);
    u.install();
    ASSERT_TRUE(until(UpdateStage::failed));
    EXPECT_EQ(left(), std::vector<std::string>{});
    EXPECT_FALSE(fs::exists(received()));
}

TEST_F(UpdateOverNetwork, CancelledDownloadLeavesNothingAndCanBeBegunAgain) {
    publish("2.0", "/begun/", "new.deb");
    auto& u = start();
    u.check();
    ASSERT_TRUE(until(UpdateStage::available));
    for (int round = 0; round < 2; ++round) {
        u.download();
        ASSERT_TRUE(test::until(scheduler, [&] { return u.receivedBytes() > 0; }));
        EXPECT_EQ(left().size(), 1u);
        u.cancelDownload();
        EXPECT_EQ(u.stage(), UpdateStage::available);
        EXPECT_TRUE(test::until(scheduler, [&] { return left().empty(); }));
    }
    u.download();
    ASSERT_TRUE(test::until(scheduler, [&] { return u.receivedBytes() > 0; }));
    updater.reset();  // quitting in the middle of it
    EXPECT_TRUE(eventually([&] { return left().empty(); }));
}

TEST_F(UpdateOverNetwork, DesktopWithoutAnInstallerSaysWhereThePackageIs) {
    publish("2.0", "/files/", "new.deb");
    const fs::path list = fs::path(getenv("XDG_CONFIG_HOME")) / "mimeapps.list";
    fs::rename(list, list.string() + ".away");
    auto& u = start();
    u.check();
    ASSERT_TRUE(until(UpdateStage::available));
    u.download();
    ASSERT_TRUE(until(UpdateStage::ready)) << u.message().english();
    u.install();
    ASSERT_TRUE(until(UpdateStage::failed));
    const auto file = (folder.path() / "updates" / "1" / "quorvi-2.0.deb").string();
    EXPECT_EQ(u.message(), say::updateNoInstaller(file));
    u.close();
    EXPECT_TRUE(fs::exists(file));
    fs::rename(list.string() + ".away", list);
}

}  // namespace
}  // namespace quorvi::test
