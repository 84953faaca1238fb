#pragma once

#include "platform/Disposal.h"
#include "platform/posix/Descriptor.h"

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
/// was killed half-way. A line is written before its thing moves and counts while that lies in the Trash, or
/// while that Trash cannot be looked into, so that no end of a program and no second removal makes it wrong.
/// Every call blocks for as long as the disk does.
class PutBackRecord {
public:
    explicit PutBackRecord(const QString &applicationData);
    ~PutBackRecord();
    PutBackRecord(const PutBackRecord &) = delete;
    PutBackRecord &operator=(const PutBackRecord &) = delete;

    /// What counts, in the order it was moved. Empty when there is none or it cannot be read.
    std::vector<TrashedItem> load() const;
    /// Whether nothing counts; mostly known by the first line.
    bool isEmpty() const;

    /// Begins a removal's record: what an earlier one left is forgotten, unless one is under way, which then
    /// makes one record with this.
    void begin();
    /// Beside what is kept; none of it is forgotten while this object lives. False when it cannot be written.
    bool add(const TrashedItem &item);

    /// Puts all of it back where it was, the last one first, and keeps what stays in the Trash and what a
    /// removal has added meanwhile.
    PutBackResult putBackAll(Disposal &disposal) const;

private:
    std::vector<TrashedItem> linesThatCount(std::size_t most) const;
    void keep(const std::vector<TrashedItem> &items) const;

    std::filesystem::path m_filePath;
    Descriptor m_adding; ///< open and shared with other removals since the first line
};

} // namespace swabby
