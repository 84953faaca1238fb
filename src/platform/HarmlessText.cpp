#include "platform/HarmlessText.h"

#include <QtCore/QStringList>

namespace swabby {
namespace {

bool turnsAround(QChar character)
{
    const char16_t code = character.unicode();
    return (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069) || code == 0x200e ||
           code == 0x200f || code == 0x061c;
}

bool isHarmful(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return turnsAround(character);
    }
}

} // namespace

QString oneLine(QString text, QChar standIn)
{
    for (QChar &character : text)
        if (isHarmful(character))
            character = standIn;
    return text;
}

QString harmlessLines(const QString &text, QChar standIn)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines)
        line = oneLine(line, standIn);
    return lines.join(QLatin1Char('\n'));
}

QString cutTo(QString text, qsizetype most)
{
    if (text.size() > most)
        text.truncate(text.at(most - 1).isHighSurrogate() ? most - 1 : most);
    return text;
}

} // namespace swabby
