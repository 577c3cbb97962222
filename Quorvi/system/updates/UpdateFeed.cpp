#include "Quorvi/system/updates/UpdateFeed.h"

#include <string_view>
#include <utility>

#include "QuorviCore/Error.h"
#include "QuorviCore/async/Async.h"
#include "QuorviCore/updates/ReleaseNotes.h"

namespace quorvi {

namespace {

constexpr std::size_t maximumNotesBytes = std::size_t{256} << 10;

Message notesOf(std::string_view html) {
    auto markup = safeReleaseNotes(html);
    return markup.empty() ? Message() : say::verbatim(std::move(markup));
}

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

Task<Message> readReleaseNotes(const UpdateEnvironment& environment, AppcastItem item,
                               std::stop_token stop) {
    if (!item.notes.empty() || item.notesLink.empty()) co_return notesOf(item.notes);
    if (isSecureAddress(item.notesLink)) {
        try {
            auto fetching =
                environment.downloader.fetch(item.notesLink, maximumNotesBytes, std::move(stop));
            const auto notes = co_await fetching;
            co_return notesOf(textOf(notes));
        } catch (const QuorviError&) {
        }
    }
    co_return say::releaseNotesNotLoaded();
}

}  // namespace quorvi
