#include "platform/module/PlayedModule.h"

namespace {
marrowfin::testsupport::PlayedModule module;
}

extern "C" Q_DECL_EXPORT marrowfin::testsupport::PlayedModule* marrowfinPlayedModule() {
    module.answer = 42;
    module.madeOn = QThread::currentThread();
    return &module;
}
