#include "ui/presentation/WindowPlace.h"

#include <algorithm>

namespace swabby {
namespace {

int areaOf(const QRect &rect)
{
    return rect.isValid() ? rect.width() * rect.height() : 0;
}

} // namespace

QJsonObject jsonOf(const WindowPlace &place)
{
    QJsonObject json = {{QStringLiteral("width"), place.size.width()},
                        {QStringLiteral("height"), place.size.height()},
                        {QStringLiteral("isMaximized"), place.isMaximized}};
    if (place.corner) {
        json.insert(QStringLiteral("x"), place.corner->x());
        json.insert(QStringLiteral("y"), place.corner->y());
    }
    return json;
}

std::optional<WindowPlace> windowPlaceFrom(const QJsonObject &json)
{
    // Beyond that an area is no number any more.
    constexpr int most = 30'000;
    const auto number = [&json](const char *key) -> std::optional<int> {
        const QJsonValue value = json.value(QLatin1String(key));
        return value.isDouble() && std::abs(value.toDouble()) <= most ? std::optional(value.toInt())
                                                                      : std::nullopt;
    };
    const QSize size(number("width").value_or(0), number("height").value_or(0));
    if (size.isEmpty())
        return std::nullopt;
    const auto x = number("x");
    const auto y = number("y");
    return WindowPlace{x && y ? std::optional(QPoint(*x, *y)) : std::nullopt, size,
                       json.value(QLatin1String("isMaximized")).toBool()};
}

WindowPlace placedOn(const QList<QRect> &screens, WindowPlace place, const QSize &least)
{
    if (screens.isEmpty())
        return place;
    QRect screen = screens.first();
    if (place.corner) {
        const QRect window(*place.corner, place.size);
        const auto shownOn = [&window](const QRect &each) { return areaOf(each & window); };
        screen = *std::max_element(screens.begin(), screens.end(), [&](const QRect &one, const QRect &other) {
            return shownOn(one) < shownOn(other);
        });
        if (shownOn(screen) == 0)
            place.corner.reset();
    }
    place.size = place.size.boundedTo(screen.size()).expandedTo(least);
    if (place.corner) {
        // The upper left corner counts where the window is larger than the screen.
        const auto inside = [](int wanted, int first, int last) {
            return std::max(first, std::min(wanted, last));
        };
        place.corner = {inside(place.corner->x(), screen.left(), screen.right() + 1 - place.size.width()),
                        inside(place.corner->y(), screen.top(), screen.bottom() + 1 - place.size.height())};
    }
    return place;
}

} // namespace swabby
