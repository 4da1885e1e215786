#include "base/Outcome.h"

#include <QCoreApplication>
#include <QThread>

namespace marrowfin {

void postToMain(std::function<void()> block) {
    if (QCoreApplication* application = QCoreApplication::instance())
        QMetaObject::invokeMethod(application, std::move(block), Qt::QueuedConnection);
}

bool isMainThread() {
    const QCoreApplication* application = QCoreApplication::instance();
    return application != nullptr && QThread::currentThread() == application->thread();
}

} // namespace marrowfin
