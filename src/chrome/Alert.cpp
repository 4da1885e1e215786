#include "chrome/Alert.h"

#include "base/Invariant.h"

#include <QMessageBox>
#include <QPushButton>

namespace marrowfin::chrome {

Outcome<int> runAlert(const AlertSpec& asked) {
    MARROWFIN_INVARIANT(!asked.buttons.isEmpty());
    auto [settler, outcome] = makeOutcome<int>();
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Marrowfin"), asked.messageText);
    box->setObjectName(QStringLiteral("alert"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(asked.informativeText);
    box->setTextFormat(Qt::PlainText);
    box->setWindowModality(Qt::NonModal);
    for (const QString& title : asked.buttons)
        box->addButton(title,
                       title == asked.buttons.first() ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
    const QList<QAbstractButton*> buttons = [&] {
        QList<QAbstractButton*> inOrder;
        for (const QString& title : asked.buttons)
            for (QAbstractButton* button : box->buttons())
                if (button->text() == title)
                    inOrder << button;
        return inOrder;
    }();
    box->setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    box->setEscapeButton(buttons.last());
    QObject::connect(box, &QMessageBox::finished, box, [box, buttons, settler = settler](int) {
        const qsizetype pressed = buttons.indexOf(box->clickedButton());
        settler.settle(alertFirstButton + static_cast<int>(pressed < 0 ? buttons.size() - 1 : pressed));
    });
    // Not modal: a capture may be taken while the alert is up.
    box->show();
    box->raise();
    box->activateWindow();
    return outcome;
}

} // namespace marrowfin::chrome
