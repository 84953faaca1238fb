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

/// What the latest removal moved to the Trash, kept in a private file of Swabby's own data folder, one line
/// of JSON for each thing, so that it can be undone by another program, after a restart, and when the removal
/// was killed half-way. Every call blocks for as long as the disk does.
class PutBackRecord {
public:
    explicit PutBackRecord(const QString &applicationData);

    /// Empty when there is none or it cannot be read.
    std::vector<TrashedItem> load() const;
    /// Beside what is kept. False when it cannot be written.
    bool add(const TrashedItem &item) const;
    /// In place of what was kept. False, and what was kept stands, when it cannot be saved.
    bool store(const std::vector<TrashedItem> &items) const;
    void forget() const;

    /// Puts all of it back where it was, the last one first, and keeps what stays in the Trash and what a
    /// removal has added meanwhile.
    PutBackResult putBackAll(Disposal &disposal) const;

private:
    QString m_filePath;
};

} // namespace swabby
