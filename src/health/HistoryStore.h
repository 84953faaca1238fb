#pragma once

#include "engine/HistoryPoint.h"

#include <QtCore/QString>

namespace swabby::HistoryStore {

/// Swabby's data folder, made when it is missing. Empty when it cannot be made.
QString ensureFolder(const QString &applicationData);

/// The points of the last day, oldest first as stored. Empty when the file is missing, unreadable, no
/// regular file or no history; the file is neither repaired nor deleted. now in seconds since 1970. Reads the
/// disk.
History load(const QString &applicationData, double now);

/// Deletes what killed saves have left beside the file. Hold the folder's lock: another program's save in
/// progress looks the same.
void sweep(const QString &applicationData);

/// Replaces the file whole with the points of the last day, or leaves it as it was and gives why. Waits for
/// the disk: background work only.
QString save(const QString &applicationData, const History &points, double now);

} // namespace swabby::HistoryStore
