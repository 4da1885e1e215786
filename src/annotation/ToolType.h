// The eleven tools of the editor, in the order of the palette. Any thread.
#pragma once

#include <QChar>
#include <QString>
#include <array>
#include <optional>

namespace marrowfin::annotation {

enum class ToolType { select, crop, rectangle, ellipse, arrow, line, pen, highlight, blur, text, number };

inline constexpr std::array allToolTypes{ToolType::select,  ToolType::crop,      ToolType::rectangle,
                                         ToolType::ellipse, ToolType::arrow,     ToolType::line,
                                         ToolType::pen,     ToolType::highlight, ToolType::blur,
                                         ToolType::text,    ToolType::number};

// "select", "crop" and so on: the name of the case.
QString rawValue(ToolType tool);
// Nothing for an unknown string.
std::optional<ToolType> toolType(const QString& rawValue);

// The letter that makes the tool current, without modifiers.
QChar keyboardLetter(ToolType tool);
// Nothing for a letter that is no tool's; upper case is.
std::optional<ToolType> toolForLetter(const QString& letter);

} // namespace marrowfin::annotation
