#include "engine/ByteCount.h"

#include <QtCore/QStringList>

#include <array>
#include <limits>

namespace swabby {
namespace {

__extension__ using Wide = __int128; // a byte count times a hundred, exactly

struct Unit {
    const char *name;
    int decimals;
};

constexpr std::array units = {Unit{"KB", 0}, Unit{"MB", 1}, Unit{"GB", 2},
                              Unit{"TB", 2}, Unit{"PB", 2}, Unit{"EB", 2}};

QString withoutTrailingZeros(Wide scaled, int decimals)
{
    for (; decimals > 0 && scaled % 10 == 0; --decimals)
        scaled /= 10;
    QString digits = QString::number(static_cast<quint64>(scaled));
    if (decimals > 0) {
        digits = digits.rightJustified(decimals + 1, QLatin1Char('0'));
        digits.insert(digits.size() - decimals, QLatin1Char('.'));
    }
    return digits;
}

/// Halves round away from zero; what rounds up to a whole next unit is shown in that.
QString formatted(std::uint64_t bytes, unsigned step)
{
    if (bytes == 0)
        return QStringLiteral("Zero KB");
    if (bytes < step)
        return QStringLiteral("%1 byte%2").arg(bytes).arg(bytes == 1 ? QLatin1String() : QLatin1String("s"));
    Wide size = step;
    for (std::size_t i = 0;; ++i, size *= step) {
        const Wide power = units[i].decimals == 0 ? 1 : units[i].decimals == 1 ? 10 : 100;
        const Wide scaled = (static_cast<Wide>(bytes) * power + size / 2) / size;
        if (scaled < step * power || i + 1 == units.size())
            return withoutTrailingZeros(scaled, units[i].decimals) + QLatin1Char(' ') +
                   QLatin1String(units[i].name);
    }
}

} // namespace

QString fileByteCount(std::int64_t bytes)
{
    constexpr unsigned decimalStep = 1000;
    if (bytes >= 0)
        return formatted(static_cast<std::uint64_t>(bytes), decimalStep);
    return QLatin1Char('-') + formatted(0 - static_cast<std::uint64_t>(bytes), decimalStep);
}

QString memoryByteCount(std::uint64_t bytes)
{
    constexpr unsigned binaryStep = 1024;
    return formatted(bytes, binaryStep);
}

} // namespace swabby
