#pragma once

#include "startup/LoginItem.h"

#include <QtCore/QStringList>

#include <optional>

/// Everything that is ever said to the model: pure functions and fixed texts. What people and programs named
/// goes in as it stands; the request's own encoding keeps it text.
namespace swabby::Prompts {

const QString &explainInstructions();
const QString &weeklySummaryInstructions();
const QString &askInstructions();
const QString &checkInstructions();
const QString &cacheInstructions();

/// Percentages are cut off towards zero.
QString explainProcess(const QString &name, const QString &path, double cpuPercent, double memPercent);
QString explainLoginItem(const LoginItem &item);
/// freedText is a size for people, or empty when nothing was freed.
QString weeklySummary(const QString &freedText, qint64 attentionCount);
QString ask(const QString &question, const QString &systemContext);
/// What a full check found, a plain phrase each.
QStringList checkFindings(qint64 itemCount, const QString &totalBytesText,
                          const std::optional<QString> &topProcessName, qint64 loginItemCount);
QString checkSummary(const QStringList &findings);
QString cacheFolder(const QString &name, const QString &sizeText);

} // namespace swabby::Prompts
