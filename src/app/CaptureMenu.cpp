#include "app/CaptureMenu.h"

#include "chrome/Symbols.h"
#include "platform/Services.h"
#include "platform/SurfaceHost.h"

#include <QLabel>
#include <QMenu>
#include <QWidgetAction>

namespace marrowfin::app {

namespace {

struct Row {
    QString title;
    QString symbol;
    QString keyLabel;
};

QAction* addRow(QMenu& menu, const Row& row, std::function<void()> action) {
    // The toolkit shows what follows a tab in the key column, without making a shortcut of it.
    const QString text = row.keyLabel.isEmpty() ? row.title : row.title + u'\t' + row.keyLabel;
    auto* made = new QAction(text, &menu);
    made->setObjectName(row.title);
    if (!row.symbol.isEmpty())
        made->setIcon(chrome::symbolIcon(row.symbol, menu.palette().color(QPalette::WindowText)));
    made->setIconVisibleInMenu(true);
    QObject::connect(made, &QAction::triggered, &menu, [action = std::move(action)] { action(); });
    menu.addAction(made);
    return made;
}

void addHeader(QMenu& menu, const QString& title) {
    auto* label = new QLabel(title);
    QFont font = label->font();
    font.setWeight(QFont::DemiBold);
    label->setFont(font);
    label->setContentsMargins(10, 6, 10, 2);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, palette.color(QPalette::PlaceholderText));
    label->setPalette(palette);
    auto* header = new QWidgetAction(&menu);
    header->setObjectName(title);
    header->setText(title);
    header->setDefaultWidget(label);
    header->setEnabled(false);
    menu.addAction(header);
}

void addSelfTimer(QMenu& menu, const MenuActions& actions) {
    QMenu* seconds = menu.addMenu(QStringLiteral("Self-Timer"));
    seconds->menuAction()->setObjectName(QStringLiteral("Self-Timer"));
    seconds->menuAction()->setIcon(
        chrome::symbolIcon(QStringLiteral("timer"), menu.palette().color(QPalette::WindowText)));
    for (const int tag : {3, 5, 10}) {
        QAction* row = addRow(*seconds, {QStringLiteral("%1 seconds").arg(tag), {}, {}},
                              [selfTimer = actions.selfTimer, tag] { selfTimer(tag); });
        row->setData(tag);
    }
    platform::services().surfaceHost.adoptMenu(*seconds);
}

bool isRecording(const RecorderFeature* recorder) {
    return recorder != nullptr && recorder->state() == RecorderState::recording;
}

std::unique_ptr<QMenu> makeMenu(const QString& title) {
    auto menu = std::make_unique<QMenu>(title);
    platform::services().surfaceHost.adoptMenu(*menu);
    return menu;
}

void addCaptureRows(QMenu& menu, const MenuActions& actions) {
    addHeader(menu, QStringLiteral("Capture"));
    addRow(
        menu,
        {QStringLiteral("All-In-One"), QStringLiteral("camera.viewfinder"), QStringLiteral("Super+Shift+S")},
        actions.captureAllInOne);
    addRow(
        menu,
        {QStringLiteral("Capture Area"), QStringLiteral("rectangle.dashed"), QStringLiteral("Super+Shift+4")},
        actions.captureArea);
    addRow(menu,
           {QStringLiteral("Capture Previous Area"), QStringLiteral("rectangle.dashed.badge.record"), {}},
           actions.capturePreviousArea);
    addRow(menu,
           {QStringLiteral("Capture Fullscreen"), QStringLiteral("desktopcomputer"),
            QStringLiteral("Super+Shift+3")},
           actions.captureFullscreen);
    addRow(menu,
           {QStringLiteral("Capture Window"), QStringLiteral("macwindow"), QStringLiteral("Super+Shift+5")},
           actions.captureWindow);
    addRow(menu, {QStringLiteral("Scrolling Capture"), QStringLiteral("scroll"), {}},
           actions.scrollingCapture);
    addSelfTimer(menu, actions);
}

void addToolRows(QMenu& menu, const MenuActions& actions) {
    addHeader(menu, QStringLiteral("Tools"));
    addRow(menu, {QStringLiteral("Capture Text (OCR)"), QStringLiteral("text.viewfinder"), {}},
           actions.captureText);
    addRow(menu,
           {QStringLiteral("Open from Clipboard"), QStringLiteral("doc.on.clipboard"),
            QStringLiteral("Super+V")},
           actions.openFromClipboard);
    addRow(menu, {QStringLiteral("Pin to Screen"), QStringLiteral("pin"), {}}, actions.pinToScreen);
}

} // namespace

std::unique_ptr<QMenu> makeMainMenu(const MenuActions& actions, const RecorderFeature* recorder) {
    auto menu = makeMenu(QStringLiteral("Marrowfin"));
    addCaptureRows(*menu, actions);
    menu->addSeparator();
    addToolRows(*menu, actions);
    menu->addSeparator();
    addHeader(*menu, QStringLiteral("Recording"));
    // Fixed at the moment the menu opens; it doesn't tick while it is open.
    if (isRecording(recorder))
        addRow(*menu,
               {QStringLiteral("Stop Recording (%1)").arg(recorder->formattedDuration()),
                QStringLiteral("stop.circle.fill"),
                {}},
               actions.recordScreen);
    else
        addRow(*menu, {QStringLiteral("Record Screen"), QStringLiteral("record.circle"), {}},
               actions.recordScreen);
    menu->addSeparator();
    addRow(*menu, {QStringLiteral("Capture History..."), QStringLiteral("clock.arrow.circlepath"), {}},
           actions.showHistory);
    addRow(*menu, {QStringLiteral("Settings..."), QStringLiteral("gear"), QStringLiteral("Super+,")},
           actions.openSettings);
    addRow(*menu, {QStringLiteral("Check for Updates..."), QStringLiteral("arrow.down.circle"), {}},
           actions.checkForUpdates);
    menu->addSeparator();
    addRow(*menu, {QStringLiteral("Quit Marrowfin"), QStringLiteral("power"), QStringLiteral("Super+Q")},
           actions.quit);
    return menu;
}

std::unique_ptr<QMenu> makeAllInOneMenu(const MenuActions& actions, const RecorderFeature* recorder) {
    auto menu = makeMenu(QString());
    addRow(*menu, {QStringLiteral("Capture Area"), QStringLiteral("rectangle.dashed"), {}},
           actions.captureArea);
    addRow(*menu, {QStringLiteral("Capture Window"), QStringLiteral("macwindow"), {}}, actions.captureWindow);
    addRow(*menu, {QStringLiteral("Capture Fullscreen"), QStringLiteral("desktopcomputer"), {}},
           actions.captureFullscreen);
    menu->addSeparator();
    addRow(*menu, {QStringLiteral("Scrolling Capture"), QStringLiteral("scroll"), {}},
           actions.scrollingCapture);
    addRow(*menu, {QStringLiteral("Capture Text (OCR)"), QStringLiteral("text.viewfinder"), {}},
           actions.captureText);
    menu->addSeparator();
    const QString title =
        isRecording(recorder) ? QStringLiteral("Stop Recording") : QStringLiteral("Record Screen");
    addRow(*menu, {title, QStringLiteral("record.circle"), {}}, actions.recordScreen);
    return menu;
}

} // namespace marrowfin::app
