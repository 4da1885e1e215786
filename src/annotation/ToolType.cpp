#include "annotation/ToolType.h"

#include <algorithm>

namespace marrowfin::annotation {

namespace {

struct ToolNames {
    const char* rawValue;
    char letter;
};

// In the order of the cases.
constexpr std::array<ToolNames, allToolTypes.size()> names{{{"select", 'v'},
                                                            {"crop", 'c'},
                                                            {"rectangle", 'r'},
                                                            {"ellipse", 'e'},
                                                            {"arrow", 'a'},
                                                            {"line", 'l'},
                                                            {"pen", 'p'},
                                                            {"highlight", 'h'},
                                                            {"blur", 'b'},
                                                            {"text", 't'},
                                                            {"number", 'n'}}};

const ToolNames& namesOf(ToolType tool) {
    return names[static_cast<size_t>(tool)];
}

template <class Predicate>
std::optional<ToolType> toolWhere(Predicate predicate) {
    const auto found = std::find_if(allToolTypes.begin(), allToolTypes.end(), predicate);
    return found == allToolTypes.end() ? std::nullopt : std::optional(*found);
}

} // namespace

QString rawValue(ToolType tool) {
    return QString::fromLatin1(namesOf(tool).rawValue);
}

std::optional<ToolType> toolType(const QString& raw) {
    return toolWhere([&](ToolType tool) { return rawValue(tool) == raw; });
}

QChar keyboardLetter(ToolType tool) {
    return QChar::fromLatin1(namesOf(tool).letter);
}

std::optional<ToolType> toolForLetter(const QString& letter) {
    return toolWhere([&](ToolType tool) { return letter == keyboardLetter(tool); });
}

} // namespace marrowfin::annotation
