#include "ui/presentation/PlainWords.h"

#include <cmath>

namespace swabby {
namespace {

bool isHarmful(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        break;
    }
    const ushort code = character.unicode();
    return (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069) || code == 0x200e ||
           code == 0x200f;
}

} // namespace

QString oneLine(const QString &name)
{
    QString line = name;
    for (QChar &character : line)
        if (isHarmful(character))
            character = QLatin1Char(' ');
    return line;
}

QString sentence(const QString &words)
{
    return oneLine(words) + QLatin1Char('.');
}

QString wholeNumberText(double value)
{
    if (!std::isfinite(value))
        return QStringLiteral("–");
    return QString::asprintf("%.0f", std::trunc(value) + 0.0);
}

QString hoursAndMinutes(int minutes)
{
    return QStringLiteral("%1h %2m").arg(minutes / 60).arg(minutes % 60);
}

} // namespace swabby
