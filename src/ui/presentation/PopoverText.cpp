#include "ui/presentation/PopoverText.h"

#include "engine/ByteCount.h"
#include "engine/TimeText.h"
#include "health/MainSection.h"
#include "ui/presentation/Gauges.h"
#include "ui/presentation/PlainWords.h"

#include <algorithm>

namespace swabby {
namespace {

constexpr int gap = 6;

Tint speedTint(double percent)
{
    return percent < 26 ? Tint::accent : percent < 71 ? Tint::orange : Tint::red;
}

QString wholePercent(double percent)
{
    return wholeNumberText(percent) + QLatin1Char('%');
}

} // namespace

QList<PopoverChip> popoverChips(const SystemStats &stats, bool speedIsKnown)
{
    const QString speed = sectionName(MainSection::speed);
    QList<PopoverChip> chips = {
        {QStringLiteral("gauge.with.dots.needle.67percent"), QStringLiteral("Speed"),
         speedIsKnown ? wholePercent(stats.cpuUsagePercent) : QStringLiteral("…"),
         speedIsKnown ? speedTint(stats.cpuUsagePercent) : Tint::accent, speed},
        {QStringLiteral("memorychip"), QStringLiteral("Memory"), wholePercent(memoryPercent(stats)),
         Tint::accent, speed},
        {QStringLiteral("internaldrive"), QStringLiteral("Storage"), fileByteCount(stats.diskFreeBytes),
         storageTint(stats), sectionName(MainSection::storage)},
    };
    if (stats.batteryPercent)
        chips.append({batterySymbol(stats.isCharging), QStringLiteral("Battery"),
                      wholePercent(*stats.batteryPercent), stats.isCharging ? Tint::green : Tint::accent,
                      sectionName(MainSection::battery)});
    return chips;
}

QString updatedText(const std::optional<QDateTime> &time, const QLocale &locale)
{
    if (!time)
        return QStringLiteral("Taking a first look…");
    return QStringLiteral("Updated ") + timeOfDay(*time, locale);
}

QPoint popoverPosition(const QRect &item, const QSize &panel, const QRect &available)
{
    const bool isBelow = item.center().y() < available.center().y();
    const int x = item.center().x() - panel.width() / 2;
    const int y = isBelow ? item.bottom() + gap : item.top() - gap - panel.height();
    // The upper left corner counts where the panel is larger than the screen.
    const auto inside = [](int wanted, int first, int last) {
        return std::max(first, std::min(wanted, last));
    };
    return {inside(x, available.left(), available.right() + 1 - panel.width()),
            inside(y, available.top(), available.bottom() + 1 - panel.height())};
}

} // namespace swabby
