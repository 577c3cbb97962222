#include "tests/dictation/DictationFixture.h"

namespace quorvi::test {
namespace {

using PermissionsTest = DictationTest;

TEST_F(PermissionsTest, AreLookedAtRegularlyAndReviveTheKeyboard) {
    EXPECT_TRUE(model->ready());
    keyStore.remove().start();
    permissions.setMicrophone(MicrophoneAuthorization::denied);
    accessibility.trusted = false;
    scheduler.advance(2s);
    EXPECT_FALSE(model->hasKey() || model->microphoneAllowed() || model->accessibilityAllowed());
    EXPECT_FALSE(keyboard.isValid()) << "no hook without accessibility";
    accessibility.trusted = true;
    workspace.wake();
    EXPECT_TRUE(model->keyboardReady());
    keyboard.invalidate();
    workspace.wake();
    EXPECT_TRUE(model->keyboardReady());
    EXPECT_FALSE(model->ready());
}

TEST_F(PermissionsTest, AreAskedForOrTheirSettingsOpened) {
    permissions.setMicrophone(MicrophoneAuthorization::notDetermined);
    model->requestMicrophone();
    EXPECT_TRUE(permissions.openedPanes.empty());
    permissions.answer(MicrophoneAuthorization::authorized);
    EXPECT_TRUE(model->microphoneAllowed());
    model->requestMicrophone();
    model->requestAccessibility();
    EXPECT_EQ(permissions.openedPanes,
              (std::vector<PrivacyPane>{PrivacyPane::microphone, PrivacyPane::accessibility}));
    EXPECT_EQ(accessibility.trustRequests, 1);
}

}  // namespace
}  // namespace quorvi::test
