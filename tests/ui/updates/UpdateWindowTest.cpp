#include "Quorvi/ui/updates/UpdateWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QEventLoop>
#include <QPushButton>
#include <memory>
#include <string>

#include "Quorvi/platform/linux/curl/CurlDownloader.h"
#include "Quorvi/platform/linux/posix/SerialExecutor.h"
#include "Quorvi/shell/QtScheduler.h"
#include "Quorvi/system/MemoryPreferences.h"
#include "Quorvi/ui/updates/UpdateSettings.h"
#include "tests/fakes/FakeUpdateInstaller.h"
#include "tests/support/Waiting.h"
#include "tests/support/network/SignedReleases.h"
#include "tests/support/network/TlsServer.h"

namespace quorvi::test {
namespace {

// The window on a real desktop, with an updater that downloads from a real server; only the
// installer is none.
class UpdateWindowTest : public testing::Test {
protected:
    UpdateWindowTest() {
        authority.issue("server", "IP:127.0.0.1");
        releases.build("new", "quorvi", "2.0");
        server = std::make_unique<TlsServer>(authority, "server", "127.0.0.1", releases.folder());
        downloader = std::make_unique<CurlDownloader>(scheduler, authority.caFile());
        updater = std::make_unique<AppUpdater>(
            UpdateEnvironment{scheduler,
                              executor,
                              preferences,
                              *downloader,
                              installer,
                              {server->url("/files/appcast.xml"), releases.publicKey(), "1.5", "12",
                               "quorvi", folder.path() / "u"}});
        window = std::make_unique<UpdateWindow>(*updater);
        updater->showWindow = [this] { window->present(); };
    }

    void publish(const std::string& place, const std::string& notes) {
        const auto more =
            "<pubDate>Wed, 25 Nov 2026 08:00:00 +0000</pubDate><description><![CDATA[" + notes +
            "]]></description>";
        const auto item =
            releases.item("2.0", server->url(place + "new.deb"), releases.signatureOf("new.deb"),
                          std::filesystem::file_size(releases.file("new.deb")), more);
        releases.write("appcast.xml", SignedReleases::feed(item));
    }
    bool until(const std::function<bool()>& condition) {
        return eventually([&] {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            return condition();
        });
    }
    bool until(UpdateStage stage) {
        return until([&] { return updater->stage() == stage; });
    }
    // The texts of what can be seen, each once, in the order of the layout's children.
    QStringList seen() const {
        QStringList texts;
        for (const auto* label : window->findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty()) texts << label->text();
        for (const auto* button : window->findChildren<QPushButton*>())
            if (button->isVisible()) texts << QStringLiteral("[%1]").arg(button->text());
        return texts;
    }
    void press(const char* text) {
        for (auto* button : window->findChildren<QPushButton*>())
            if (button->isVisible() && button->text() == QString::fromUtf8(text))
                return button->click();
        ADD_FAILURE() << "no button " << text << " beside "
                      << seen().join(QStringLiteral(" | ")).toStdString();
    }
    // Nothing that is shown may be cut off, once the window manager and the layout are done.
    void expectNothingClipped() {
        EXPECT_TRUE(until([this] { return window->isVisible() && clipped().isEmpty(); }))
            << clipped().join(QStringLiteral(" | ")).toStdString();
    }
    QStringList clipped() const {
        QStringList texts;
        for (const auto* label : window->findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty() &&
                (label->height() < label->heightForWidth(label->width()) ||
                 !window->rect().contains(label->geometry())))
                texts << label->text();
        for (const auto* button : window->findChildren<QPushButton*>())
            if (button->isVisible() && !window->rect().contains(button->geometry()))
                texts << button->text();
        return texts;
    }

    static void SetUpTestSuite() {
        static int count = 1;
        static char name[] = "UpdateWindowTest";
        static char* arguments[] = {name, nullptr};
        qt = std::make_unique<QApplication>(count, arguments);
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    }
    static void TearDownTestSuite() { qt.reset(); }
    static inline std::unique_ptr<QApplication> qt;

    TestAuthority authority;
    SignedReleases releases;
    TestFolder folder;
    std::unique_ptr<TlsServer> server;
    QtScheduler scheduler;
    SerialExecutor executor{"updates"};
    MemoryPreferences preferences;
    std::unique_ptr<CurlDownloader> downloader;
    FakeUpdateInstaller installer;
    std::unique_ptr<AppUpdater> updater;
    std::unique_ptr<UpdateWindow> window;
};

TEST_F(UpdateWindowTest, LeadsFromTheCheckToTheInstaller) {
    publish("/files/", "<h3>New</h3><ul><li>Greek</li></ul>");
    updater->check();
    EXPECT_EQ(seen().first(2),
              QStringList({QStringLiteral("Checking for updates…"), QStringLiteral("[Cancel]")}));
    ASSERT_TRUE(until(UpdateStage::available)) << updater->message().english();
    const auto size = QLocale().formattedDataSize(
        static_cast<qint64>(std::filesystem::file_size(releases.file("new.deb"))), 1,
        QLocale::DataSizeSIFormat);
    EXPECT_EQ(seen().join(QLatin1Char('\n')).toStdString(),
              "Quorvi 2.0 is available\nYou have Quorvi 1.5.\nWednesday, 25 November 2026 · " +
                  size.toStdString() + "\n[Later]\n[Download]");
    EXPECT_EQ(window->findChild<QTextBrowser*>()->toPlainText().toStdString(), "New\nGreek");
    expectNothingClipped();
    press("Download");
    ASSERT_TRUE(until(UpdateStage::ready)) << updater->message().english();
    EXPECT_TRUE(installer.opened.empty()) << "nothing is opened before the user says so";
    expectNothingClipped();
    press("Install…");
    ASSERT_TRUE(until(UpdateStage::handedOver)) << updater->message().english();
    ASSERT_EQ(installer.opened.size(), 1u);
    expectNothingClipped();
    press("Close");
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(updater->stage(), UpdateStage::idle);
}

TEST_F(UpdateWindowTest, NotesLoadNothingAndADownloadCanBeCancelled) {
    publish("/begun/", "<img src='" + server->url("/pixel.png") + "'><p style=\"background: url(" +
                           server->url("/back.png") + ")\">News</p>");
    updater->check();
    ASSERT_TRUE(until(UpdateStage::available)) << updater->message().english();
    press("Download");
    const auto half = std::filesystem::file_size(releases.file("new.deb")) / 2;
    ASSERT_TRUE(until([&] { return updater->receivedBytes() == half; }));
    EXPECT_NEAR(window->findChild<QProgressBar*>()->value(), 500, 1);
    EXPECT_TRUE(seen().filter(QStringLiteral(" kB of ")).size() == 1);
    expectNothingClipped();
    press("Cancel");
    EXPECT_EQ(updater->stage(), UpdateStage::available);
    press("Later");
    EXPECT_FALSE(window->isVisible());
    CurlDownloader observer(scheduler, authority.caFile());
    Running<Bytes> fetching(observer.fetch(server->url("/stats"), 10'000, {}));
    ASSERT_TRUE(until([&] { return fetching.ended(); }));
    const std::string journal(fetching.value()->begin(), fetching.value()->end());
    EXPECT_NE(journal.find("new.deb"), journal.npos);
    EXPECT_EQ(journal.find(".png"), journal.npos) << journal;
}

TEST_F(UpdateWindowTest, FailureIsShownWholeAndTheNextCheckBeginsAnew) {
    releases.write("appcast.xml", "<!DOCTYPE rss><rss/>");
    updater->check();
    ASSERT_TRUE(until(UpdateStage::failed));
    EXPECT_EQ(seen().join(QLatin1Char('\n')).toStdString(),
              "Can't look for updates\nThe update feed was refused. It declares a document type, "
              "which a feed has no use for.\n[Close]");
    expectNothingClipped();
    window->close();
    EXPECT_EQ(updater->stage(), UpdateStage::idle);
    releases.write("appcast.xml", SignedReleases::feed(""));
    updater->check();
    ASSERT_TRUE(until(UpdateStage::upToDate));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(seen().contains(QStringLiteral("Quorvi 1.5 is the newest version.")));
}

TEST_F(UpdateWindowTest, SettingsFollowTheSwitchAndBeginTheCheck) {
    UpdateSettings settings(*updater);
    settings.show();
    auto* box = settings.findChild<QCheckBox*>();
    EXPECT_TRUE(box->isChecked());
    box->click();
    EXPECT_FALSE(updater->automaticChecks());
    preferences.setBoolean("automaticUpdateChecks", true);
    EXPECT_TRUE(box->isChecked());
    settings.findChild<QPushButton*>()->click();
    EXPECT_TRUE(until([&] { return window->isVisible(); }));
}

}  // namespace
}  // namespace quorvi::test
