#include "Quorvi/ui/settings/SettingsPage.h"

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/corrections/CorrectionsSettings.h"
#include "Quorvi/ui/history/HistorySettings.h"
#include "Quorvi/ui/indicator/RecordingAppearanceSettings.h"
#include "Quorvi/ui/settings/AccountSyncSettings.h"
#include "Quorvi/ui/settings/ApiKeySettings.h"
#include "Quorvi/ui/settings/DictationSettings.h"
#include "Quorvi/ui/settings/GeneralSettings.h"
#include "Quorvi/ui/settings/PrivacySettings.h"
#include "Quorvi/ui/settings/RecognitionSettings.h"
#include "Quorvi/ui/updates/UpdateSettings.h"
#include "Quorvi/ui/widgets/Card.h"

namespace quorvi {

SettingsPage::SettingsPage(const WindowServices& services)
    : Page(tr("SET UP YOUR FLOW"), tr("Settings"), {}) {
    auto& model = services.model;
    add(new GeneralSettings(services.loginItem));
    add(new DictationSettings(model));
    auto* appearance = new Card(tr("Recording appearance"), "macwindow");
    appearance->content().addWidget(new RecordingAppearanceSettings(model));
    add(appearance);
    add(new CorrectionsSettings(services.corrections,
                                [&model] { model.armInsertionTest(AppModel::Sample::learning); }));
    add(new RecognitionSettings(model));
    add(new ApiKeySettings(model, services.keys, services.scheduler));
    add(new AccountSyncSettings(services.sync, services.preferences));
    add(new UpdateSettings(services.updater));
    add(new HistorySettings(services.history));
    add(new PrivacySettings(model, services.hasSettingsFor));
}

}  // namespace quorvi
