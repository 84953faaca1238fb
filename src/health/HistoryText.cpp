#include "health/HistoryText.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLocale>

#include <cmath>

namespace swabby {
namespace {

/// The file counts its seconds from 2001-01-01 00:00 UTC.
constexpr double referenceDate = 978'307'200;

void appendNumber(QByteArray &text, double number)
{
    text += QByteArray::number(std::isfinite(number) ? number : 0, 'g', QLocale::FloatingPointShortest);
}

} // namespace

std::optional<History> historyIn(const QByteArray &text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isArray())
        return std::nullopt;
    const QJsonArray stored = document.array();
    History points;
    points.reserve(stored.size());
    for (const QJsonValue &element : stored) {
        const QJsonObject point = element.toObject();
        const QJsonValue date = point.value(QLatin1String("date"));
        const QJsonValue cpu = point.value(QLatin1String("cpu"));
        const QJsonValue mem = point.value(QLatin1String("mem"));
        if (!date.isDouble() || !cpu.isDouble() || !mem.isDouble())
            return std::nullopt;
        points.append({date.toDouble() + referenceDate, cpu.toDouble(), mem.toDouble()});
    }
    return points;
}

QByteArray textOfHistory(const History &points)
{
    constexpr qsizetype bytesPerPoint = 80;
    QByteArray text = "[";
    text.reserve(points.size() * bytesPerPoint);
    for (const HistoryPoint &point : points) {
        text += text.size() == 1 ? "{\"date\":" : ",{\"date\":";
        appendNumber(text, point.date - referenceDate);
        text += ",\"cpu\":";
        appendNumber(text, point.cpu);
        text += ",\"mem\":";
        appendNumber(text, point.mem);
        text += '}';
    }
    return text += ']';
}

} // namespace swabby
