#include "Quorvi/ui/window/DictationPage.h"

#include "Quorvi/dictation/AppModel.h"
#include "Quorvi/ui/window/SetupCard.h"
#include "Quorvi/ui/window/StatusCard.h"
#include "Quorvi/ui/window/TranscriptCard.h"
#include "Quorvi/ui/window/TryItCard.h"

namespace quorvi {

DictationPage::DictationPage(const WindowServices& services)
    : Page({}, tr("Speak in your language."),
           services.model.shortcutChoice().desktop().hasEscape
               ? tr("Quorvi stays in your menu bar. Press Esc to cancel a dictation.")
               : tr("Quorvi stays in your menu bar. “quorvi cancel” cancels a dictation.")) {
    add(new SetupCard(services.model, services.scheduler));
    add(new StatusCard(services.model));
    add(new TranscriptCard(services.model, services.corrections));
    add(new TryItCard);
}

}  // namespace quorvi
