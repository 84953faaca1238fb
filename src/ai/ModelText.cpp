#include "ai/ModelText.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace swabby {
namespace {

/// One block of a reply; no value when it is none.
struct Block {
    QString type;
    std::optional<QString> text;
};

std::optional<Block> blockFrom(const QJsonValue &value)
{
    const QJsonValue type = value[QLatin1String("type")];
    const QJsonValue text = value[QLatin1String("text")];
    const bool hasText = !text.isUndefined() && !text.isNull();
    if (!type.isString() || (hasText && !text.isString()))
        return std::nullopt;
    return Block{type.toString(), hasText ? std::optional(text.toString()) : std::nullopt};
}

} // namespace

QByteArray messagesRequest(const QString &model, const QString &system, const QString &prompt, int maxTokens)
{
    const QJsonObject message = {{QStringLiteral("role"), QStringLiteral("user")},
                                 {QStringLiteral("content"), prompt}};
    return QJsonDocument(QJsonObject{{QStringLiteral("model"), model},
                                     {QStringLiteral("max_tokens"), maxTokens},
                                     {QStringLiteral("system"), system},
                                     {QStringLiteral("messages"), QJsonArray{message}}})
        .toJson(QJsonDocument::Compact);
}

std::optional<QString> messagesReplyText(const QByteArray &body)
{
    const QJsonValue content = QJsonDocument::fromJson(body).object().value(QLatin1String("content"));
    if (!content.isArray())
        return std::nullopt;
    std::optional<Block> firstText;
    for (const QJsonValue element : content.toArray()) {
        const auto block = blockFrom(element);
        // One block that is none spoils the reply, also behind the one that is wanted.
        if (!block)
            return std::nullopt;
        if (!firstText && block->type == QLatin1String("text"))
            firstText = block;
    }
    return firstText ? firstText->text : std::nullopt;
}

QString stripCodeFences(const QString &text)
{
    const QLatin1String fence("```");
    QString inner = text.trimmed();
    if (!inner.startsWith(fence))
        return inner;
    if (const qsizetype firstLineEnd = inner.indexOf(QLatin1Char('\n')); firstLineEnd >= 0)
        inner.remove(0, firstLineEnd + 1);
    if (const qsizetype closing = inner.lastIndexOf(fence); closing >= 0)
        inner.truncate(closing);
    return inner.trimmed();
}

} // namespace swabby
