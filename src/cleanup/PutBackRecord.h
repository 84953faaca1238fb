#pragma once

#include "platform/Disposal.h"

#include <QtCore/QString>

namespace swabby {

/// How a put-back went.
struct PutBackResult {
    int restored = 0;
    int left = 0;

    bool operator==(const PutBackResult &) const = default;
};

/// What the latest removal moved to the Trash, kept in a private file of Swabby's own data folder so that it
/// can be undone by another program and after a restart. Every call blocks for as long as the disk does.
class PutBackRecord {
public:
    explicit PutBackRecord(const QString &applicationData);

    /// Empty when there is none or it cannot be read.
    std::vector<TrashedItem> load() const;
    /// In place of what was kept. False, and what was kept stands, when it cannot be saved.
    bool store(const std::vector<TrashedItem> &items) const;
    void forget() const;

    /// Puts all of it back where it was, the last one first, and keeps what stays in the Trash.
    PutBackResult putBackAll(Disposal &disposal) const;

private:
    QString m_filePath;
};

} // namespace swabby
