#pragma once

#include "platform/SettingsStore.h"

#include <QtCore/QJsonObject>

#include <array>
#include <mutex>
#include <optional>

namespace swabby {

/// What a settings file holds.
struct SettingsText {
    QJsonObject values;
    QString problem; ///< why it is no JSON object, for the person who wrote it; empty when it is one
};
SettingsText settingsIn(const QByteArray &content);

/// Settings in one JSON file. A write takes a lock on the folder, reads what is there, changes one key and
/// replaces the file whole, so two programs at once lose nothing and a kill leaves the old or the new
/// file. A file that is no JSON object gives no values and takes none: it may hold what a person relies on.
class FileSettingsStore final : public SettingsStore {
public:
    explicit FileSettingsStore(QString filePath);

    Reading read(const QString &key) const override;
    bool change(const QString &key, const Edit &edit) override;
    QString place() const override { return m_filePath; }

private:
    struct Contents {
        QJsonObject values;
        bool isThere = false;
        QString problem;
    };
    /// What tells one state of the file from another; its rights too.
    using Stamp = std::array<qint64, 5>;

    Contents contents() const;
    std::optional<Stamp> stamp() const;

    QString m_filePath;
    mutable std::mutex m_mutex;
    mutable Contents m_read;
    mutable std::optional<Stamp> m_readStamp; ///< of what m_read holds
};

} // namespace swabby
