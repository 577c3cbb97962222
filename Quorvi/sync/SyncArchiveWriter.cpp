#include "Quorvi/sync/SyncArchiveWriter.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <exception>
#include <limits>
#include <system_error>
#include <utility>

#include "QuorviCore/checksum/Crc32c.h"
#include "QuorviCore/sync/SyncDocument.h"

namespace quorvi {

namespace {

static_assert(std::endian::native == std::endian::little);

// The journal is a header and entries. The header identifies the document content that the entries
// apply to. A journal of another content is out of date: the document that replaced it contains all
// of its changes. An entry is its size, its checksum and the deltas of one write.
constexpr std::string_view magic = "QJOURNL1";
constexpr std::size_t headerSize = 8 + 8 + 4 + 4;
constexpr std::size_t entryHeaderSize = 4 + 4;

struct Interrupted {};

template <class Number>
void append(std::string& out, Number value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    out.append(bytes, sizeof bytes);
}

template <class Number>
Number numberAt(std::string_view bytes, std::size_t at) {
    Number value;
    std::memcpy(&value, bytes.data() + at, sizeof value);
    return value;
}

// The checksum of an entry also covers its size.
std::uint32_t sumOf(std::string_view size, std::string_view content) {
    return crc32c(content, crc32c(size));
}

// Returns the content of the entry at this position, if a complete one starts there.
std::optional<std::string_view> entryAt(std::string_view journal, std::size_t at) {
    if (journal.size() - at < entryHeaderSize) return std::nullopt;
    const auto size = numberAt<std::uint32_t>(journal, at);
    const auto content = journal.substr(at + entryHeaderSize);
    if (size == 0 || content.size() < size) return std::nullopt;
    const auto sum = sumOf(journal.substr(at, 4), content.substr(0, size));
    if (sum != numberAt<std::uint32_t>(journal, at + 4)) return std::nullopt;
    return content.substr(0, size);
}

std::filesystem::path journalOf(std::filesystem::path document) {
    return document.replace_extension(".journal");
}

}  // namespace

SyncArchiveWriter::SyncArchiveWriter(FileStore& files, JournalFiles& journals,
                                     std::filesystem::path document, std::size_t wholeUpTo,
                                     std::function<bool()> flushStores)
    : files_(files),
      path_(std::move(document)),
      wholeUpTo_(wholeUpTo),
      flushStores_(std::move(flushStores)) {
    // First, since its lock keeps other processes from changing the files after they were read.
    try {
        journal_ = journals.open(journalOf(path_));
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::resource_unavailable_try_again) throw;
        // The files may be readable even where nothing can be written.
    }
    if (auto content = files_.read(path_)) {
        document_ = Generation{content->size(), crc32c(*content)};
        documentSize_ = content->size();
        state_ = decodeSyncDocument(*std::move(content));
    }
    const auto journal = journal_ ? journal_->read() : files_.read(journalOf(path_)).value_or("");
    if (document_ && journal.starts_with(header(*document_)))
        replay(journal);
    else
        journalNeedsCut_ = !journal.empty();
}

std::string SyncArchiveWriter::header(Generation generation) {
    std::string out(magic);
    append(out, generation.size);
    append(out, generation.sum);
    append(out, crc32c(out));
    return out;
}

void SyncArchiveWriter::replay(std::string_view journal) {
    std::size_t at = headerSize;
    while (auto entry = entryAt(journal, at)) {
        at += entryHeaderSize + entry->size();
        while (!entry->empty()) SyncDelta::takeFrom(*entry).applyTo(state_);
    }
    // An interrupted write leaves part of one entry at the end. A complete entry after it means
    // that the journal is damaged in the middle, where it held changes that were reported as saved.
    for (std::size_t later = at + 1; later + entryHeaderSize < journal.size(); ++later) {
        const std::uint64_t size = numberAt<std::uint32_t>(journal, later);
        if (later + entryHeaderSize + size == journal.size() && entryAt(journal, later))
            throw SyncFormatError("the journal is damaged at byte " + std::to_string(at));
    }
    journalSize_ = at;
    journalGrowth_ = at;
    journalNeedsCut_ = at < journal.size();
}

void SyncArchiveWriter::push(std::vector<SyncDelta> deltas) {
    std::lock_guard lock(pushing_);
    std::move(deltas.begin(), deltas.end(), std::back_inserter(pushed_));
}

void SyncArchiveWriter::takePushed() {
    std::vector<SyncDelta> taken;
    {
        std::lock_guard lock(pushing_);
        taken = std::exchange(pushed_, {});
    }
    for (auto& delta : taken) {
        delta.applyTo(state_);
        unwritten_.push_back(std::move(delta));
    }
}

bool SyncArchiveWriter::write() {
    ++waiting_;
    std::lock_guard lock(working_);
    --waiting_;
    return writePushed();
}

bool SyncArchiveWriter::writePushed() {
    if (closed_) return false;
    takePushed();
    if (unwritten_.empty() && document_ && !failed_) return true;
    if (!storesAreFlushed()) return false;
    const bool isLarge = document_ && document_->size + journalSize_ > wholeUpTo_;
    if (isLarge && journal_ && !failed_) {
        try {
            appendToJournal();
            return true;
        } catch (const std::exception&) {
            failed_ = true;
            return false;
        }
    }
    return replaceDocument(true);
}

void SyncArchiveWriter::appendToJournal() {
    if (journalNeedsCut_) {
        journal_->truncate(journalSize_);
        journalNeedsCut_ = false;
    }
    std::string bytes = journalSize_ == 0 ? header(*document_) : std::string();
    const auto begin = bytes.size();
    bytes.resize(begin + entryHeaderSize);
    for (const auto& delta : unwritten_) delta.appendTo(bytes);
    const auto size = bytes.size() - begin - entryHeaderSize;
    if (size > std::numeric_limits<std::uint32_t>::max()) throw SyncFormatError("too much at once");
    const auto shortSize = static_cast<std::uint32_t>(size);
    std::memcpy(bytes.data() + begin, &shortSize, 4);
    const std::string_view all = bytes;
    const auto sum = sumOf(all.substr(begin, 4), all.substr(begin + entryHeaderSize));
    std::memcpy(bytes.data() + begin + 4, &sum, 4);

    journalNeedsCut_ = true;  // until the append has succeeded
    journal_->append(bytes);
    journalNeedsCut_ = false;
    journalSize_ += bytes.size();
    journalGrowth_ = journalSize_;
    unwritten_.clear();
}

bool SyncArchiveWriter::replaceDocument(bool regardless) {
    SyncDocumentEncoder encoder(state_);
    Generation generation;
    try {
        files_.replaceInPieces(path_, [&] {
            if (!regardless && waiting_ > 0) throw Interrupted();
            const auto piece = encoder.next();
            generation.size += piece.size();
            generation.sum = crc32c(piece, generation.sum);
            return piece;
        });
    } catch (const Interrupted&) {
        return false;
    } catch (const std::exception&) {
        // Usually the old document is still there and its journal stays valid. It may also be that
        // the new one replaced it but could not be made durable.
        if (!unwritten_.empty() || !hasDocument(document_)) failed_ = true;
        return false;
    }
    document_ = generation;
    documentSize_ = generation.size;
    unwritten_.clear();
    failed_ = false;
    // The journal is out of date now, whether or not it can be cut here.
    journalNeedsCut_ = journalNeedsCut_ || journalSize_ > 0;
    journalSize_ = 0;
    journalGrowth_ = 0;
    if (journalNeedsCut_ && journal_) try {
            journal_->truncate(0);
            journalNeedsCut_ = false;
        } catch (const std::exception&) {
            // The next append tries again.
        }
    return true;
}

bool SyncArchiveWriter::hasDocument(const std::optional<Generation>& generation) const {
    if (!generation) return false;
    try {
        const auto content = files_.read(path_);
        return content && Generation{content->size(), crc32c(*content)} == *generation;
    } catch (const std::exception&) {
        return false;
    }
}

SyncArchiveWriter::Need SyncArchiveWriter::needsDocument() const {
    // Rarely, so that a large document does not wear out the disk, but often enough that the
    // journal is read quickly. A rewrite while not idle delays work that waits for the executor.
    const std::uint64_t journal = journalGrowth_, document = documentSize_;
    if (journal > std::max<std::uint64_t>(128 * wholeUpTo_, document)) return Need::now;
    return journal > std::max<std::uint64_t>(wholeUpTo_, document / 4) ? Need::whenIdle
                                                                       : Need::none;
}

bool SyncArchiveWriter::writeDocument(bool regardless) {
    std::lock_guard lock(working_);
    if (closed_) return false;
    takePushed();
    if (journalSize_ == 0 && unwritten_.empty() && document_ && !failed_) return true;
    if (!storesAreFlushed()) return false;
    return replaceDocument(regardless);
}

void SyncArchiveWriter::look(const std::function<void(const SyncState&)>& work) {
    std::lock_guard lock(working_);
    takePushed();
    work(state_);
}

void SyncArchiveWriter::close() {
    ++waiting_;
    std::lock_guard lock(working_);
    --waiting_;
    takePushed();
    if (!unwritten_.empty()) writePushed();
    journal_.reset();
    closed_ = true;
}

SyncState SyncArchiveWriter::copy() {
    std::lock_guard lock(working_);
    return state_;
}

}  // namespace quorvi
