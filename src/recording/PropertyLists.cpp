#include "recording/PropertyLists.h"

#include <QtCore/QXmlStreamWriter>

namespace swabby {
namespace {

QString withoutControls(QString text)
{
    return text.removeIf([](QChar letter) {
        return letter < QLatin1Char(' ') || letter.isSurrogate() || letter.unicode() >= 0xFFFE;
    });
}

} // namespace

QByteArray propertyList(const std::vector<std::pair<QString, QString>> &texts)
{
    QByteArray list;
    QXmlStreamWriter writer(&list);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("plist"));
    writer.writeAttribute(QStringLiteral("version"), QStringLiteral("1.0"));
    writer.writeStartElement(QStringLiteral("dict"));
    for (const auto &[key, text] : texts) {
        writer.writeTextElement(QStringLiteral("key"), key);
        writer.writeTextElement(QStringLiteral("string"), withoutControls(text));
    }
    writer.writeEndDocument();
    return list;
}

} // namespace swabby
