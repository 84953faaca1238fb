#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace swabby {

/// What the model is asked, as the body of a Messages API request.
QByteArray messagesRequest(const QString &model, const QString &system, const QString &prompt, int maxTokens);

/// The model that is asked unless the person names another one.
inline constexpr auto builtInModel = "claude-haiku-4-5";

/// The first text block of a Messages API reply, as it stands. No value when the reply is none or has no
/// text.
std::optional<QString> messagesReplyText(const QByteArray &body);

/// The text without blanks around it and without the fence of a code block that begins it.
QString stripCodeFences(const QString &text);

} // namespace swabby
