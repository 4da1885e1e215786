#include "editor/SaveSheet.h"

#include "base/Clock.h"
#include "base/Shared.h"
#include "imaging/CaptureFile.h"
#include "platform/Desktop.h"
#include "platform/Services.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

namespace marrowfin::editor {

using namespace imaging;

namespace {

struct Saving {
    // Where the last file went; none before the first.
    QString lastFolder;
};

QString startFolder() {
    const QString last = Shared<Saving>::instance().lastFolder;
    if (!last.isEmpty() && QFileInfo(last).isDir())
        return last;
    const std::optional<QString> pictures = platform::services().folders.pictures();
    return pictures && QFileInfo(*pictures).isDir() ? *pictures : QDir::homePath();
}

void write(const Image& image, const QString& path, const std::function<void(const QString&)>& written) {
    Shared<Saving>::instance().lastFolder = QFileInfo(path).absolutePath();
    CaptureFile file;
    file.image = image;
    file.path = path;
    file.manners.access = FileAccess::AsUsual;
    writeCapture(file).then([written, path](const Result<qint64>& result) {
        // The settled behaviour: nobody is told when the file can't be written.
        if (result || cameToWriting(result.error()))
            written(path);
    });
}

// Where the toolkit's own dialog would ask in a loop of its own whether to replace a file, this one asks
// beside it. (Without a Q_OBJECT of its own it may still be the desktop's dialog, which asks by itself.)
class SaveDialog : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

    void accept() override {
        const bool desktopsOwn = testAttribute(Qt::WA_DontShowOnScreen);
        const QFileInfo chosen(selectedFiles().value(0));
        if (desktopsOwn || !chosen.exists() || chosen.isDir())
            QFileDialog::accept();
        else
            askToReplace(chosen.fileName());
    }

private:
    void askToReplace(const QString& name) {
        auto* question =
            new QMessageBox(QMessageBox::Warning, windowTitle(),
                            QStringLiteral("“%1” already exists. Do you want to replace it?").arg(name),
                            QMessageBox::NoButton, this);
        question->setObjectName(QStringLiteral("replace"));
        question->setAttribute(Qt::WA_DeleteOnClose);
        question->setTextFormat(Qt::PlainText);
        QPushButton* replace = question->addButton(QStringLiteral("Replace"), QMessageBox::AcceptRole);
        question->setDefaultButton(question->addButton(QMessageBox::Cancel));
        connect(question, &QMessageBox::finished, this, [this, question, replace] {
            if (question->clickedButton() != replace)
                return;
            setOption(DontConfirmOverwrite);
            QFileDialog::accept();
        });
        question->open();
    }
};

} // namespace

void askWhereToSave(const Image& image, QWidget* view, std::function<void(const QString& path)> written) {
    const QString name = QStringLiteral("save");
    // One that was just closed is still there until the event loop comes round.
    const auto* open = view->findChild<QFileDialog*>(name, Qt::FindDirectChildrenOnly);
    if (open && open->isVisible())
        return;
    // The PNG is ready by the time a place was found.
    image.startEncoding();
    auto* dialog = new SaveDialog(view, QStringLiteral("Save"), startFolder());
    dialog->setObjectName(name);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilters(
        {QStringLiteral("PNG image (*.png)"), QStringLiteral("JPEG image (*.jpg *.jpeg)")});
    dialog->setDefaultSuffix(QStringLiteral("png"));
    dialog->selectFile(QStringLiteral("Marrowfin-%1.png").arg(Clock::now().toSecsSinceEpoch()));
    // For a name that is typed without an ending; one that has an ending is changed by the dialog.
    QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString& filter) {
        const bool png = filter == dialog->nameFilters().first();
        dialog->setDefaultSuffix(png ? QStringLiteral("png") : QStringLiteral("jpg"));
    });
    QObject::connect(
        dialog, &QFileDialog::fileSelected, dialog,
        [image, written = std::move(written)](const QString& path) { write(image, path, written); });
    dialog->open();
}

} // namespace marrowfin::editor
