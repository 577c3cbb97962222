// Draws the recording indicator in every theme and stage, one sheet for each appearance of the
// desktop: indicator_pictures FOLDER

#include <QPainter>
#include <filesystem>

#include "Quorvi/ui/indicator/RecordingHUD.h"
#include "tests/support/ui/OffscreenQt.h"

using namespace quorvi;

namespace {

struct Sample {
    DictationStage stage;
    const char* message;
    bool copy = false;
    bool update = false;
    bool retry = false;
};

constexpr Sample samples[] = {
    {DictationStage::recording, "Dictating into Text Editor"},
    {DictationStage::recording, "Dictating into A Program With a Very Long Name Indeed", false,
     true},
    {DictationStage::transcribing, "Converting speech to text…"},
    {DictationStage::inserting, "Inserting into Text Editor…"},
    {DictationStage::success, "Paste sent to Text Editor."},
    {DictationStage::clipboard, "Text copied — press Ctrl+V (in terminals Ctrl+Shift+V).", true},
    {DictationStage::failure,
     "The speech service did not answer in time. Check your connection and try again, or copy the "
     "transcript from the window.",
     true},
    {DictationStage::failure,
     "The transcription service is temporarily unavailable. Please try again. You can try again "
     "for "
     "10 minutes.",
     false, false, true},
    {DictationStage::failure, "No speech was heard."},
    {DictationStage::learned, "Russet Miner → russetmanor"},
    {DictationStage::idle, "Click a text field in any app, then use your shortcut."},
};

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    const test::OffscreenQt application;
    const std::filesystem::path folder = arguments[1];
    std::filesystem::create_directories(folder);
    constexpr double scale = 2;
    constexpr int columns = 3;
    for (const bool dark : {false, true}) {
        QApplication::setPalette(test::desktopPalette(dark));
        const auto cell = RecordingHUD::panelSize(DictationStage::idle) + QSize(12, 8);
        QImage sheet(QSize(cell.width() * columns, cell.height() * int(std::size(samples))) * scale,
                     QImage::Format_ARGB32_Premultiplied);
        sheet.setDevicePixelRatio(scale);
        QLinearGradient wall(0, 0, cell.width() * columns, 400);
        wall.setColorAt(0, dark ? QColor(0x1A, 0x1C, 0x22) : QColor(0xFF, 0xFF, 0xFF));
        wall.setColorAt(1, dark ? QColor(0x30, 0x3A, 0x4A) : QColor(0xC8, 0xD6, 0xE8));
        sheet.fill(Qt::white);
        QPainter painter(&sheet);
        painter.fillRect(sheet.rect(), wall);
        for (std::size_t row = 0; row < std::size(samples); ++row) {
            const auto& sample = samples[row];
            for (std::size_t column = 0; column < columns; ++column) {
                RecordingHUD hud;
                RecordingHUD::Values values{.stage = sample.stage,
                                            .message = QString::fromUtf8(sample.message),
                                            .elapsed = 67,
                                            .level = 0.7,
                                            .theme = allRecordingThemes[column]};
                if (sample.copy) values.onCopy = [] {};
                if (sample.retry) values.onRetry = [] {};
                if (sample.update) {
                    values.updateVersion = QStringLiteral("2.0");
                    values.onUpdate = [] {};
                }
                hud.setAttribute(Qt::WA_TranslucentBackground);
                hud.setReducesMotion(true);
                hud.show();
                hud.setValues(values);
                QCoreApplication::processEvents();
                QPixmap picture(hud.size() * scale);
                picture.setDevicePixelRatio(scale);
                picture.fill(Qt::transparent);
                hud.render(&picture, {}, {}, QWidget::DrawChildren);
                painter.drawPixmap(QPoint(static_cast<int>(column) * cell.width() + 6,
                                          static_cast<int>(row) * cell.height() + 4),
                                   picture);
            }
        }
        painter.end();
        sheet.save(QString::fromStdString(
            (folder / (dark ? "indicator-dark.png" : "indicator-light.png")).string()));
    }
    return 0;
}
