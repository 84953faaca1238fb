#pragma once

#include "cleanup/DeveloperCleanup.h"
#include "flows/cleanup/CacheVetting.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

namespace swabby {

// Findings as JSON: field names letter for letter, cases by name. A path that is no text shows replacement
// characters; ids tell such paths apart.

QJsonObject toJson(const CacheEntry &entry);
QJsonObject toJson(const SuggestedCache &suggestion);
QJsonObject toJson(const DuplicateGroup &group);
QJsonObject toJson(const DeepScanItem &item);
QJsonObject toJson(const InstalledApp &app, bool isRunning);
QJsonObject toJson(const AppLeftover &leftover);
QJsonObject toJson(const SimulatorRuntimeInfo &runtime);
QJsonObject toJson(const DockerRow &row);
QJsonObject toJson(const DeveloperCleanup::DockerStatus &status);
QJsonObject toJson(const RemovableItem &item);

template <typename Record>
QJsonArray arrayOf(const std::vector<Record> &records)
{
    QJsonArray array;
    for (const Record &record : records)
        array.append(toJson(record));
    return array;
}

} // namespace swabby
