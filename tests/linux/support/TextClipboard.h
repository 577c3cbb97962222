#pragma once

#include <poll.h>
#include <xcb/xcb.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>

#include "Quorvi/platform/linux/X11Connection.h"

namespace quorvi::test {

// Owns the clipboard with one text and notices when somebody reads it: the proof that a paste was
// understood by the application, at the moment it happens. Serves requests on a thread of its own,
// because some applications read twice.
class TextClipboard {
public:
    TextClipboard()
        : clipboard_(connection_.atom("CLIPBOARD")),
          targets_(connection_.atom("TARGETS")),
          utf8_(connection_.atom("UTF8_STRING")) {
        window_ = xcb_generate_id(connection_.get());
        xcb_create_window(connection_.get(), XCB_COPY_FROM_PARENT, window_, connection_.root(), 0,
                          0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                          nullptr);
        thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
    }

    void offer(const std::string& text) {
        {
            std::lock_guard lock(mutex_);
            text_ = text;
        }
        reads_ = 0;
        xcb_set_selection_owner(connection_.get(), window_, clipboard_, XCB_CURRENT_TIME);
        connection_.synchronise();
    }

    // Until the text has been read; false after a generous limit.
    bool waitForRead() const {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (reads_ == 0 && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        return reads_ > 0;
    }

private:
    void run(const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            while (const auto event = ownXcb(xcb_poll_for_event(connection_.get())))
                if (xcbEventType(*event) == XCB_SELECTION_REQUEST)
                    serve(*reinterpret_cast<const xcb_selection_request_event_t*>(event.get()));
            pollfd descriptor{connection_.fileDescriptor(), POLLIN, 0};
            poll(&descriptor, 1, 20);
        }
    }

    void serve(const xcb_selection_request_event_t& request) {
        auto* c = connection_.get();
        auto property = request.property;
        if (request.target == targets_) {
            const xcb_atom_t offered[] = {targets_, utf8_};
            xcb_change_property(c, XCB_PROP_MODE_REPLACE, request.requestor, property,
                                XCB_ATOM_ATOM, 32, 2, offered);
        } else if (request.target == utf8_) {
            std::lock_guard lock(mutex_);
            xcb_change_property(c, XCB_PROP_MODE_REPLACE, request.requestor, property, utf8_, 8,
                                static_cast<std::uint32_t>(text_.size()), text_.data());
            ++reads_;
        } else {
            property = XCB_ATOM_NONE;
        }
        xcb_selection_notify_event_t answer{};
        answer.response_type = XCB_SELECTION_NOTIFY;
        answer.time = request.time;
        answer.requestor = request.requestor;
        answer.selection = request.selection;
        answer.target = request.target;
        answer.property = property;
        xcb_send_event(c, 0, request.requestor, 0, reinterpret_cast<const char*>(&answer));
        xcb_flush(c);
    }

    X11Connection connection_;
    xcb_atom_t clipboard_;
    xcb_atom_t targets_;
    xcb_atom_t utf8_;
    xcb_window_t window_ = XCB_NONE;
    std::mutex mutex_;  // guards text_
    std::string text_;
    std::atomic<int> reads_{0};
    std::jthread thread_;  // last: it ends before what it uses
};

}  // namespace quorvi::test
