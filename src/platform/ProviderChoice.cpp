#include "platform/ProviderChoice.h"

namespace marrowfin::platform {

ProviderChoice::ProviderChoice(Environment environment) : environment(std::move(environment)) {}

QString ProviderChoice::wantedFor(const QString& service) const {
    return environment(QStringLiteral("MARROWFIN_PROVIDER_") + service.toUpper());
}

void ProviderChoice::noteOverride(const QString& service, const QString& wanted, bool works) {
    const QString named = service + u'=' + wanted;
    overrides << (works ? named : named + QStringLiteral(" (not here)"));
}

QString ProviderChoice::overrideLine() const {
    if (overrides.isEmpty())
        return {};
    return QStringLiteral("[Marrowfin] Providers named by the environment: ") +
           overrides.join(QStringLiteral(", "));
}

} // namespace marrowfin::platform
