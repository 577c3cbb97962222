#include "Quorvi/platform/linux/wayland/kwin/FakeInput.h"

#include <wayland-client.h>

#include "protocols/fake-input.h"

namespace quorvi {
namespace {

constexpr std::uint32_t firstWithKeys = 4;

}  // namespace

bool FakeInput::isOffered(const WaylandConnection& connection) {
    return connection.versionOf(org_kde_kwin_fake_input_interface.name) >= firstWithKeys;
}

FakeInput::FakeInput(WaylandConnection& connection) {
    if (!isOffered(connection)) return;
    input_ =
        connection.bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, firstWithKeys);
    org_kde_kwin_fake_input_authenticate(input_, "Quorvi", "Pastes what you have dictated");
}

FakeInput::~FakeInput() {
    if (input_) org_kde_kwin_fake_input_destroy(input_);
}

void FakeInput::key(std::uint32_t key, bool isDown) {
    if (input_) org_kde_kwin_fake_input_keyboard_key(input_, key, isDown);
}

}  // namespace quorvi
