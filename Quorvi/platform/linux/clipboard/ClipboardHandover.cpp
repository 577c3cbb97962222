#include "Quorvi/platform/linux/clipboard/ClipboardHandover.h"

#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

#include "QuorviCore/Error.h"

namespace quorvi {

namespace {

void appendNumber(Bytes& bytes, std::uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8)
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
}

void appendText(Bytes& bytes, const std::string& text) {
    appendNumber(bytes, text.size());
    bytes.insert(bytes.end(), text.begin(), text.end());
}

bool writeAll(const Descriptor& file, const Bytes& bytes) {
    for (std::size_t written = 0; written < bytes.size();) {
        const auto n = write(file.get(), bytes.data() + written, bytes.size() - written);
        if (n <= 0) return false;
        written += static_cast<std::size_t>(n);
    }
    return true;
}

// Takes the parts of a content in order and refuses to read past its end.
class Reader {
public:
    explicit Reader(const Bytes& bytes) : bytes_(bytes) {}

    std::uint64_t number() {
        need(8);
        std::uint64_t number = 0;
        for (int i = 0; i < 8; ++i) number |= std::uint64_t{bytes_[at_++]} << (8 * i);
        return number;
    }
    template <class T>
    T block() {
        const auto size = number();
        need(size);
        const auto begin = bytes_.begin() + static_cast<std::ptrdiff_t>(at_);
        at_ += size;
        return T(begin, begin + static_cast<std::ptrdiff_t>(size));
    }
    bool atEnd() const { return at_ == bytes_.size(); }

private:
    void need(std::uint64_t size) const {
        if (bytes_.size() - at_ < size)
            throw QuorviError::message(say::clipboardHandoverIncomplete());
    }

    const Bytes& bytes_;
    std::size_t at_ = 0;
};

Bytes wholeOf(const Descriptor& file) {
    struct stat info{};
    Bytes bytes(fstat(file.get(), &info) == 0 ? static_cast<std::size_t>(info.st_size) : 0);
    for (std::size_t done = 0; done < bytes.size();) {
        const auto n =
            pread(file.get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        if (n <= 0) throw QuorviError::message(say::clipboardHandoverUnreadable());
        done += static_cast<std::size_t>(n);
    }
    return bytes;
}

// Room for one descriptor beside a message.
union Control {
    cmsghdr header;
    char bytes[CMSG_SPACE(sizeof(int))];
};

}  // namespace

std::unique_ptr<Descriptor> clipboardFile(const std::vector<PasteboardItem>& items) {
    auto file = std::make_unique<Descriptor>(memfd_create("clipboard", MFD_CLOEXEC));
    if (!*file) return nullptr;
    for (const auto& item : items)
        for (const auto& one : item.representations) {
            Bytes head;
            appendText(head, one.type);
            appendText(head, one.encoding);
            appendNumber(head, static_cast<std::uint64_t>(one.format));
            appendNumber(head, one.data->size());
            if (!writeAll(*file, head) || !writeAll(*file, *one.data)) return nullptr;
        }
    return file;
}

std::vector<PasteboardItem> readClipboardFile(const Descriptor& file) {
    const auto bytes = wholeOf(file);
    PasteboardItem item;
    for (Reader reader(bytes); !reader.atEnd();) {
        PasteboardRepresentation one;
        one.type = reader.block<std::string>();
        one.encoding = reader.block<std::string>();
        one.format = static_cast<int>(reader.number());
        one.data = std::make_shared<const Bytes>(reader.block<Bytes>());
        if (one.format != 8 && one.format != 16 && one.format != 32)
            throw QuorviError::message(say::clipboardHandoverDamaged());
        item.representations.push_back(std::move(one));
    }
    if (item.representations.empty()) return {};
    return {std::move(item)};
}

bool sendClipboardMessage(const Descriptor& socket, ClipboardMessage message,
                          const Descriptor* file) {
    iovec part{&message, sizeof message};
    msghdr all{};
    all.msg_iov = &part;
    all.msg_iovlen = 1;
    Control control{};
    if (file) {
        all.msg_control = control.bytes;
        all.msg_controllen = sizeof control.bytes;
        control.header.cmsg_level = SOL_SOCKET;
        control.header.cmsg_type = SCM_RIGHTS;
        control.header.cmsg_len = CMSG_LEN(sizeof(int));
        const int descriptor = file->get();
        std::memcpy(CMSG_DATA(&control.header), &descriptor, sizeof descriptor);
    }
    return sendmsg(socket.get(), &all, MSG_NOSIGNAL | MSG_DONTWAIT) == sizeof message;
}

std::optional<ClipboardMessage> receiveClipboardMessage(const Descriptor& socket,
                                                        std::unique_ptr<Descriptor>& file) {
    ClipboardMessage message;
    iovec part{&message, sizeof message};
    msghdr all{};
    all.msg_iov = &part;
    all.msg_iovlen = 1;
    Control control{};
    all.msg_control = control.bytes;
    all.msg_controllen = sizeof control.bytes;
    file.reset();
    if (recvmsg(socket.get(), &all, MSG_CMSG_CLOEXEC) != sizeof message) return std::nullopt;
    const auto* header = CMSG_FIRSTHDR(&all);
    if (header && header->cmsg_type == SCM_RIGHTS) {
        int descriptor = -1;
        std::memcpy(&descriptor, CMSG_DATA(header), sizeof descriptor);
        file = std::make_unique<Descriptor>(descriptor);
    }
    return message;
}

}  // namespace quorvi
