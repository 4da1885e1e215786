#include "app/CaptureMenu.h"

#include "chrome/Symbols.h"
#include "commands/MenuRows.h"
#include "platform/Services.h"
#include "platform/SurfaceHost.h"

#include <QLabel>
#include <QMenu>
#include <QWidgetAction>

namespace marrowfin::app {

using namespace commands;

namespace {

void addRows(QMenu& menu, const std::vector<MenuRow>& rows, CommandTable& table);

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

// What a command's row and a submenu's have in common.
void dress(QAction& action, const MenuRow& row, const QMenu& menu) {
    action.setObjectName(row.title);
    action.setIconText(row.symbolDescription);
    if (!row.symbol.isEmpty())
        action.setIcon(chrome::symbolIcon(row.symbol, menu.palette().color(QPalette::WindowText)));
    action.setIconVisibleInMenu(true);
}

void addCommand(QMenu& menu, const MenuRow& row, CommandTable& table) {
    // The toolkit shows what follows a tab in the key column, without making a shortcut of it.
    const QString text = row.keyLabel.isEmpty() ? row.title : row.title + u'\t' + row.keyLabel;
    auto* action = new QAction(text, &menu);
    dress(*action, row, menu);
    if (row.request.delay.count() > 0)
        action->setData(static_cast<int>(row.request.delay.count()));
    QObject::connect(action, &QAction::triggered, &menu,
                     [&table, id = row.command, request = row.request] { table.run(id, request); });
    menu.addAction(action);
}

void addSubmenu(QMenu& menu, const MenuRow& row, CommandTable& table) {
    QMenu* submenu = menu.addMenu(row.title);
    dress(*submenu->menuAction(), row, menu);
    addRows(*submenu, row.rows, table);
    platform::services().surfaceHost.adoptMenu(*submenu);
}

void addRows(QMenu& menu, const std::vector<MenuRow>& rows, CommandTable& table) {
    for (const MenuRow& row : rows) {
        switch (row.kind) {
        case MenuRow::Kind::Header:
            addHeader(menu, row.title);
            break;
        case MenuRow::Kind::Separator:
            menu.addSeparator();
            break;
        case MenuRow::Kind::Command:
            addCommand(menu, row, table);
            break;
        case MenuRow::Kind::Submenu:
            addSubmenu(menu, row, table);
            break;
        }
    }
}

} // namespace

std::unique_ptr<QMenu> makeMenu(Menu menu, CommandTable& table) {
    auto made = std::make_unique<QMenu>(menuTitle(menu));
    platform::services().surfaceHost.adoptMenu(*made);
    addRows(*made, menuRows(menu, table), table);
    return made;
}

} // namespace marrowfin::app
