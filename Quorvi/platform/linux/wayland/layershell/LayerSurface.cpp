#include "Quorvi/platform/linux/wayland/layershell/LayerSurface.h"

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "Quorvi/platform/linux/gio/DescriptorSource.h"
#include "Quorvi/platform/linux/gio/GLibThread.h"
#include "Quorvi/platform/linux/posix/Descriptor.h"
#include "Quorvi/platform/linux/wayland/WaylandConnection.h"
#include "protocols/layer-shell.h"

namespace quorvi {

// What exists during a connection, on the thread.
class LayerSurface::Session {
public:
    using OnPointer = std::function<void(PointerEvent, double, double)>;

    Session(int margin, OnPointer onPointer, std::function<void()> onClosed);
    ~Session() { hide(); }

    bool isUsable() const { return connection.isAlive() && compositor_ && memory_ && shell_; }

    // The sharpest of the screens; the compositor shrinks the picture for others.
    int findScale();
    bool isShown() const { return surface_ != nullptr; }

    void show(Picture picture) {
        picture_ = std::move(picture);
        if (!isShown()) create();
        paint();
        connection.flush();
    }

    void hide() {
        frame_.reset();
        layer_.reset();
        surface_.reset();
        picture_.reset();
        connection.flush();
    }

    WaylandConnection connection;

private:
    struct Listeners;

    void create();
    // Not before the compositor is ready for a picture, nor for the next one.
    void paint();
    // The picture in memory that the compositor can read; it destroys itself when that is done.
    wl_buffer* bufferOf(const Picture& picture);

    // The picture's size, and where it takes clicks.
    void describe(const Picture& picture) {
        const auto width = static_cast<std::uint32_t>(picture.width);
        const auto height = static_cast<std::uint32_t>(picture.height);
        zwlr_layer_surface_v1_set_size(layer_.get(), width, height);
        const WaylandObject<wl_region, wl_region_destroy> region(
            wl_compositor_create_region(compositor_.get()));
        for (const auto& area : picture.clickable)
            wl_region_add(region.get(), area.x, area.y, area.width, area.height);
        wl_surface_set_input_region(surface_.get(), region.get());
    }

    const int margin_;
    const OnPointer onPointer_;
    const std::function<void()> onClosed_;
    WaylandObject<wl_compositor, wl_compositor_destroy> compositor_;
    WaylandObject<wl_shm, wl_shm_destroy> memory_;
    WaylandObject<zwlr_layer_shell_v1, zwlr_layer_shell_v1_destroy> shell_;
    WaylandObject<wl_pointer, wl_pointer_destroy> pointer_;
    WaylandObject<wl_surface, wl_surface_destroy> surface_;
    WaylandObject<zwlr_layer_surface_v1, zwlr_layer_surface_v1_destroy> layer_;
    WaylandObject<wl_callback, wl_callback_destroy> frame_;  // the last picture is not shown yet
    std::optional<Picture> picture_;                         // waits
    bool isConfigured_ = false;
    int scale_ = 1;
    double x_ = 0, y_ = 0;  // of the pointer
};

struct LayerSurface::Session::Listeners {
    static Session& self(void* data) { return *static_cast<Session*>(data); }

    static void configure(void* data, zwlr_layer_surface_v1* layer, std::uint32_t serial,
                          std::uint32_t, std::uint32_t) {
        zwlr_layer_surface_v1_ack_configure(layer, serial);
        self(data).isConfigured_ = true;
        self(data).paint();
    }
    // Its screen is gone; if it never had one, there is none.
    static void closed(void* data, zwlr_layer_surface_v1*) {
        self(data).hide();
        if (self(data).isConfigured_) self(data).onClosed_();
    }
    static constexpr zwlr_layer_surface_v1_listener layer{configure, closed};

    static void shown(void* data, wl_callback*, std::uint32_t) {
        self(data).frame_.reset();
        self(data).paint();
    }
    static constexpr wl_callback_listener frame{shown};

    static void unused(void*, wl_buffer* buffer) { wl_buffer_destroy(buffer); }
    static constexpr wl_buffer_listener buffer{unused};

    static void geometry(void*, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                         std::int32_t, const char*, const char*, std::int32_t) {}
    static void mode(void*, wl_output*, std::uint32_t, std::int32_t, std::int32_t, std::int32_t) {}
    static void done(void*, wl_output*) {}
    static void scale(void* data, wl_output*, std::int32_t scale) {
        self(data).scale_ = std::max(self(data).scale_, scale);
    }
    static constexpr wl_output_listener output{
        .geometry = geometry, .mode = mode, .done = done, .scale = scale};

    static void capabilities(void* data, wl_seat* seat, std::uint32_t capabilities) {
        auto& pointer = self(data).pointer_;
        if ((capabilities & WL_SEAT_CAPABILITY_POINTER) == 0) return pointer.reset();
        if (pointer) return;
        pointer.reset(wl_seat_get_pointer(seat));
        wl_pointer_add_listener(pointer.get(), &Listeners::pointer, data);
    }
    static constexpr wl_seat_listener seat{.capabilities = capabilities};

    static void moved(void* data, wl_pointer*, std::uint32_t, wl_fixed_t x, wl_fixed_t y) {
        self(data).x_ = wl_fixed_to_double(x);
        self(data).y_ = wl_fixed_to_double(y);
        tell(data, PointerEvent::moved);
    }
    static void entered(void* data, wl_pointer* pointer, std::uint32_t, wl_surface*, wl_fixed_t x,
                        wl_fixed_t y) {
        moved(data, pointer, 0, x, y);
    }
    static void left(void* data, wl_pointer*, std::uint32_t, wl_surface*) {
        tell(data, PointerEvent::left);
    }
    static void button(void* data, wl_pointer*, std::uint32_t, std::uint32_t, std::uint32_t button,
                       std::uint32_t state) {
        if (button == BTN_LEFT)
            tell(data, state == WL_POINTER_BUTTON_STATE_PRESSED ? PointerEvent::pressed
                                                                : PointerEvent::released);
    }
    static void axis(void*, wl_pointer*, std::uint32_t, std::uint32_t, wl_fixed_t) {}
    static constexpr wl_pointer_listener pointer{
        .enter = entered, .leave = left, .motion = moved, .button = button, .axis = axis};

    static void tell(void* data, PointerEvent event) {
        self(data).onPointer_(event, self(data).x_, self(data).y_);
    }
};

LayerSurface::Session::Session(int margin, OnPointer onPointer, std::function<void()> onClosed)
    : margin_(margin), onPointer_(std::move(onPointer)), onClosed_(std::move(onClosed)) {
    if (!isOffered(connection)) return;
    compositor_.reset(connection.bind<wl_compositor>(wl_compositor_interface, 4));
    memory_.reset(connection.bind<wl_shm>(wl_shm_interface, 1));
    shell_.reset(connection.bind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, 3));
    if (connection.seat()) wl_seat_add_listener(connection.seat(), &Listeners::seat, this);
}

int LayerSurface::Session::findScale() {
    std::vector<WaylandObject<wl_output, wl_output_destroy>> outputs;
    scale_ = 1;
    for (auto* one : connection.bindEach(wl_output_interface, 2)) {
        outputs.emplace_back(static_cast<wl_output*>(one));
        wl_output_add_listener(outputs.back().get(), &Listeners::output, this);
    }
    connection.synchronise();
    return scale_;
}

void LayerSurface::Session::create() {
    surface_.reset(wl_compositor_create_surface(compositor_.get()));
    layer_.reset(zwlr_layer_shell_v1_get_layer_surface(shell_.get(), surface_.get(), nullptr,
                                                       ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY,
                                                       "quorvi-indicator"));
    zwlr_layer_surface_v1_add_listener(layer_.get(), &Listeners::layer, this);
    zwlr_layer_surface_v1_set_anchor(layer_.get(), ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM);
    zwlr_layer_surface_v1_set_margin(layer_.get(), 0, 0, margin_, 0);
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        layer_.get(), ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
    isConfigured_ = false;
    describe(*picture_);
    wl_surface_commit(surface_.get());
}

void LayerSurface::Session::paint() {
    if (!picture_ || !isConfigured_ || frame_) return;
    const auto picture = std::exchange(picture_, std::nullopt).value();
    auto* buffer = bufferOf(picture);
    if (!buffer) return;
    describe(picture);
    wl_surface_set_buffer_scale(surface_.get(), picture.scale);
    wl_surface_attach(surface_.get(), buffer, 0, 0);
    wl_surface_damage_buffer(surface_.get(), 0, 0, picture.width * picture.scale,
                             picture.height * picture.scale);
    frame_.reset(wl_surface_frame(surface_.get()));
    wl_callback_add_listener(frame_.get(), &Listeners::frame, this);
    wl_surface_commit(surface_.get());
}

wl_buffer* LayerSurface::Session::bufferOf(const Picture& picture) {
    const int width = picture.width * picture.scale, height = picture.height * picture.scale;
    const auto size = picture.pixels.size() * sizeof picture.pixels[0];
    const Descriptor file(memfd_create("indicator", MFD_CLOEXEC));
    if (!file || write(file.get(), picture.pixels.data(), size) != static_cast<ssize_t>(size))
        return nullptr;
    const WaylandObject<wl_shm_pool, wl_shm_pool_destroy> pool(
        wl_shm_create_pool(memory_.get(), file.get(), static_cast<int>(size)));
    auto* buffer =
        wl_shm_pool_create_buffer(pool.get(), 0, width, height, width * 4, WL_SHM_FORMAT_ARGB8888);
    wl_buffer_add_listener(buffer, &Listeners::buffer, nullptr);
    return buffer;
}

class LayerSurface::Thread {
public:
    Thread(Scheduler& scheduler, int margin, Events events)
        : scheduler_(scheduler),
          margin_(margin),
          events_(std::make_shared<Events>(std::move(events))) {
        thread_.emplace("quorvi-overlay", [] {}, [this] { disconnect(); });
    }

    void show(Picture picture) {
        auto shared = std::make_shared<Picture>(std::move(picture));
        thread_->invoke([this, shared] { showNow(std::move(*shared)); });
    }
    void hide() {
        thread_->invoke([this] {
            if (session_) session_->hide();
        });
    }

private:
    void showNow(Picture picture) {
        if (!session_ && !connect()) return;
        if (!session_->isShown())
            if (const int scale = session_->findScale(); scale != picture.scale)
                post([scale](Events& events) { events.onScale(scale); });
        session_->show(std::move(picture));
        if (!processEvents()) disconnect();
    }

    bool connect() {
        session_.emplace(
            margin_,
            [this](PointerEvent event, double x, double y) {
                post([event, x, y](Events& events) { events.onPointer(event, x, y); });
            },
            [this] { post([](Events& events) { events.onClosed(); }); });
        if (!session_->isUsable()) {
            session_.reset();
            return false;
        }
        source_.emplace(session_->connection.fileDescriptor(), [this] {
            if (processEvents()) return true;
            disconnect();
            return false;
        });
        return true;
    }

    bool processEvents() {
        const bool isAlive = session_->connection.dispatch();
        session_->connection.flush();
        return isAlive && session_->connection.isAlive();
    }

    void disconnect() {
        source_.reset();
        session_.reset();
    }

    template <class F>
    void post(F work) {
        scheduler_.post([weak = std::weak_ptr(events_), work] {
            if (const auto events = weak.lock()) work(*events);
        });
    }

    Scheduler& scheduler_;
    const int margin_;
    const std::shared_ptr<Events> events_;
    // The thread's own, while there is a connection.
    std::optional<Session> session_;
    std::optional<DescriptorSource> source_;
    std::optional<GLibThread> thread_;
};

bool LayerSurface::isOffered(const WaylandConnection& connection) {
    return connection.versionOf(zwlr_layer_shell_v1_interface.name) >= 3;
}

LayerSurface::LayerSurface(Scheduler& scheduler, int margin, Events events)
    : thread_(std::make_unique<Thread>(scheduler, margin, std::move(events))) {}

LayerSurface::~LayerSurface() = default;

void LayerSurface::show(Picture picture) {
    thread_->show(std::move(picture));
}

void LayerSurface::hide() {
    thread_->hide();
}

}  // namespace quorvi
