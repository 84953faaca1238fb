#pragma once

#include "platform/Notifier.h"
#include "state/AppState.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

namespace swabby {

// Records as JSON: field names letter for letter, cases by name, an absent value null, dates as seconds
// since 1970.

/// The published state, and the notifications that its refresh posted.
QJsonObject toJson(const AppState &state, const QList<Notification> &notifications);
QJsonArray toJson(const History &history);
QJsonArray toJson(const QList<LoginItem> &items);
QJsonObject toJson(const ProcessSample &process);
QJsonArray toJson(const std::set<QString> &names);

/// "keep", "quit" or "forceQuit".
QString caseName(ActionRecommendation recommendation);

/// One JSON value as compact text, also where it is no object or array.
QByteArray jsonText(const QJsonValue &value);

} // namespace swabby
