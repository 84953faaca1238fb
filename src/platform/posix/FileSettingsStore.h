#pragma once

#include "platform/SettingsStore.h"

#include <QtCore/QJsonObject>

#include <mutex>

namespace swabby {

/// Settings in one JSON file. A write takes a lock on the folder, reads what is there, changes one key and
/// replaces the file whole, so two programs at once lose nothing and a kill leaves the old or the new
/// file. A file that is no JSON object gives no values; the first write puts it aside under the name
/// "….unreadable" instead of overwriting it.
class FileSettingsStore final : public SettingsStore {
public:
    explicit FileSettingsStore(QString filePath);

    QJsonValue value(const QString &key) const override;
    bool change(const QString &key, const Edit &edit) override;

private:
    QString m_filePath;
    mutable std::mutex m_mutex;
    mutable QJsonObject m_values;
    mutable std::pair<qint64, qint64> m_readStamp = {-1, -1}; ///< inode and modification time of m_values
};

} // namespace swabby
