#include "Quorvi/platform/linux/clipboard/ClipboardKeeper.h"

#include <algorithm>

namespace quorvi {

namespace {

using Items = std::vector<PasteboardItem>;

std::vector<const Bytes*> blocksOf(const Items& items) {
    std::vector<const Bytes*> blocks;
    for (const auto& item : items)
        for (const auto& one : item.representations) blocks.push_back(one.data.get());
    return blocks;
}

// Whether both are copies of one content, which is seen without reading it.
bool areShared(const Items& a, const Items& b) {
    return blocksOf(a) == blocksOf(b);
}

}  // namespace

// The process ends by itself, or goes on offering.
ClipboardKeeper::~ClipboardKeeper() = default;

void ClipboardKeeper::prepare(const Items& items) {
    if (program_.empty() || areShared(items, content_)) return;
    content_ = items;
    if (!process_ || !sendContent()) start();
}

void ClipboardKeeper::guard(std::uint32_t window, const Items& items) {
    using enum ClipboardMessage::Kind;
    tell({areShared(items, content_) ? guard : standIn, window});
}

void ClipboardKeeper::takeOver() {
    tell({ClipboardMessage::Kind::takeOver});
}

void ClipboardKeeper::forget() {
    if (content_.empty()) return;
    content_.clear();
    if (process_) sendContent();
}

void ClipboardKeeper::tell(ClipboardMessage message) {
    if (program_.empty()) return;
    if (process_ && sendClipboardMessage(process_->socket(), message)) return;
    if (start()) sendClipboardMessage(process_->socket(), message);
}

bool ClipboardKeeper::sendContent() {
    // Without memory nothing is kept; the outdated content would be worse.
    const auto file = content_.empty() ? nullptr : clipboardFile(content_);
    return sendClipboardMessage(process_->socket(), {}, file.get());
}

// Starts a keeper that knows the present content.
bool ClipboardKeeper::start() {
    process_.reset();
    std::vector<std::string> command{program_};
    if (!argument_.empty()) command.push_back(argument_);
    process_ = HelperProcess::start(std::move(command));
    return process_ && sendContent();
}

}  // namespace quorvi
