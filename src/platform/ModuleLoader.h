// Loads the libraries that are too heavy for every start, each when it is first asked for and on a queue of
// its own. A module stays loaded to the end of the process. Ask from any thread.
#pragma once

#include "base/Outcome.h"
#include "base/SerialQueue.h"

#include <QString>

namespace marrowfin::platform {

struct ModuleName {
    QString library; // as in "vision", for libmarrowfin_vision.so
    QString package; // what the user has to install for it
};

class ModuleLoader {
public:
    // Modules lie in the directory, or in one of their own name within it.
    explicit ModuleLoader(QString directory);
    // Where this program's own modules are: beside the library that this is in.
    static QString ownDirectory();

    // What the module's function M::entry returns, an M*; it lives as long as the process. The function runs
    // on the queue, once for each time it is asked for. Unavailable, with a sentence that names the package,
    // without the module.
    template <class M>
    Outcome<M*> load(const ModuleName& name) {
        auto [settler, outcome] = makeOutcome<M*>();
        queue.async([directory = directory, name, settler = settler] {
            const Result<QFunctionPointer> entry = resolve(directory, name, M::entry);
            if (entry)
                settler.settle(reinterpret_cast<M* (*)()>(*entry)());
            else
                settler.settle(tl::unexpected(entry.error()));
        });
        return outcome;
    }

private:
    static Result<QFunctionPointer> resolve(const QString& directory, const ModuleName& name,
                                            const char* entry);

    QString directory;
    SerialQueue queue{QStringLiteral("io.tessaly.marrowfin.modules")};
};

} // namespace marrowfin::platform
