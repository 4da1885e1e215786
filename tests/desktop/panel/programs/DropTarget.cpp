// A window that takes files, or refuses everything: DropTarget take|refuse X Y W H. Prints "ready" once it is
// on the screen, and for a drop the picture's size and the colour of its first pixel.
#include <QApplication>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>
#include <cstdio>

namespace {
class Target : public QWidget {
public:
    explicit Target(bool takes) : takes(takes) {
        setWindowFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        setAcceptDrops(true);
        setAutoFillBackground(true);
    }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override {
        event->setAccepted(takes && event->mimeData()->hasUrls());
    }
    void dropEvent(QDropEvent* event) override {
        const QUrl url = event->mimeData()->urls().value(0);
        const QImage picture(url.toLocalFile());
        event->acceptProposedAction();
        std::printf("%dx%d %s\n", picture.width(), picture.height(),
                    qPrintable(picture.isNull() ? QString() : picture.pixelColor(0, 0).name()));
        std::fflush(stdout);
    }

private:
    bool takes;
};
} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList words = QApplication::arguments();
    Target target(words.value(1) == QStringLiteral("take"));
    target.setGeometry(words.value(2).toInt(), words.value(3).toInt(), words.value(4).toInt(),
                       words.value(5).toInt());
    target.show();
    QTimer::singleShot(0, &target, [] {
        std::printf("ready\n");
        std::fflush(stdout);
    });
    return QApplication::exec();
}
