// Which provider answers a service: the first, in the order of preference, that works here. The environment
// may name another one, MARROWFIN_PROVIDER_ and the service in capitals, as in
// MARROWFIN_PROVIDER_SCREENSOURCE=x11; a name that isn't known or doesn't work here changes nothing. Main
// thread.
#pragma once

#include "base/Result.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

namespace marrowfin::platform {

template <class T>
struct Provider {
    QString name;
    // Probes, and makes the service if the desktop has it. Who made it keeps it.
    std::function<Result<T*>()> make;
};

class ProviderChoice {
public:
    // The value of a variable; empty when it isn't set.
    using Environment = std::function<QString(const QString& variable)>;

    explicit ProviderChoice(Environment environment);

    // The error is the last provider's.
    template <class T>
    Result<T*> choose(const QString& service, const std::vector<Provider<T>>& inOrder) {
        const QString wanted = wantedFor(service);
        for (const Provider<T>& provider : inOrder) {
            if (provider.name != wanted)
                continue;
            const Result<T*> made = provider.make();
            noteOverride(service, wanted, made.has_value());
            if (made)
                return made;
            return firstOf(inOrder, wanted);
        }
        if (!wanted.isEmpty())
            noteOverride(service, wanted, false);
        return firstOf(inOrder, QString());
    }

    // One line for the log when the environment named a provider; empty otherwise.
    QString overrideLine() const;

private:
    template <class T>
    static Result<T*> firstOf(const std::vector<Provider<T>>& inOrder, const QString& tried) {
        Result<T*> made = unavailable(QStringLiteral("Nothing on this desktop provides it."));
        for (const Provider<T>& provider : inOrder) {
            if (provider.name == tried)
                continue;
            made = provider.make();
            if (made)
                break;
        }
        return made;
    }
    QString wantedFor(const QString& service) const;
    void noteOverride(const QString& service, const QString& wanted, bool works);

    Environment environment;
    QStringList overrides;
};

} // namespace marrowfin::platform
