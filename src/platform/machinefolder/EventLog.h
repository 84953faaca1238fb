#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace swabby {

/// A machine folder's events.jsonl: one line for each effect on the described world. A line is written
/// whole, also with several writers at once.
class EventLog {
public:
    explicit EventLog(QString filePath) : m_filePath(std::move(filePath)) {}

    void write(const QString &kind, const QJsonValue &what) const;

private:
    QString m_filePath;
};

} // namespace swabby
