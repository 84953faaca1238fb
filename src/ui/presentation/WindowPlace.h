#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QRect>

#include <optional>

namespace swabby {

/// How a window stands on its screen.
struct WindowPlace {
    std::optional<QPoint> corner; ///< the frame's upper left one; none where programs do not choose it
    QSize size;                   ///< without the frame, and not maximized
    bool isMaximized = false;

    bool operator==(const WindowPlace &) const = default;
};

QJsonObject jsonOf(const WindowPlace &place);
/// No value for what is no place.
std::optional<WindowPlace> windowPlaceFrom(const QJsonObject &json);

/// The same on the screens that there are now, each given by its free area, the main one first: as large as
/// its screen at most, but for the least size, and moved into it. One whose screen has gone has no corner.
WindowPlace placedOn(const QList<QRect> &screens, WindowPlace place, const QSize &least);

} // namespace swabby
