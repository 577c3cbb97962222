#include "Quorvi/system/updates/UpdateFeed.h"

#include <string_view>
#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/updates/ReleaseNotes.h"

namespace quorvi {

namespace {

constexpr std::size_t maximumNotesBytes = std::size_t{256} << 10;

}  // namespace

Task<UpdateChoice> readUpdateFeed(const UpdateEnvironment& environment, std::stop_token stop) {
    const auto& configuration = environment.configuration;
    auto fetching = environment.downloader.fetch(configuration.feed, maximumAppcastBytes, stop);
    auto document = co_await fetching;
    auto choose = [document = std::move(document), current = configuration.currentVersion,
                   system = configuration.systemVersion] {
        return chooseUpdate(parseAppcast(textOf(document)), current, system);
    };
    auto choosing =
        inBackground(environment.executor, environment.scheduler, std::move(choose), stop);
    auto choice = co_await choosing;
    throwIfStopped(stop);
    if (choice.update) requireDownloadable(*choice.update);
    co_return choice;
}

Task<std::string> readReleaseNotes(const UpdateEnvironment& environment, AppcastItem item,
                                   std::stop_token stop) {
    if (!item.notes.empty() || item.notesLink.empty()) co_return safeReleaseNotes(item.notes);
    if (isSecureAddress(item.notesLink)) {
        try {
            auto fetching =
                environment.downloader.fetch(item.notesLink, maximumNotesBytes, std::move(stop));
            const auto notes = co_await fetching;
            co_return safeReleaseNotes(textOf(notes));
        } catch (const QuorviError&) {
        }
    }
    co_return "<p>The release notes could not be loaded.</p>";
}

}  // namespace quorvi
