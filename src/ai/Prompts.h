#pragma once

#include "engine/ProcessSample.h"
#include "platform/MachineWords.h"
#include "startup/LoginItem.h"

#include <QtCore/QStringList>

#include <optional>

/// Everything that is ever said to the model: pure functions of the machine's words. What programs and
/// folders are called goes in as marked(); what the person asks, as it stands.
namespace swabby::Prompts {

QString explainInstructions(const MachineWords &words);
const QString &weeklySummaryInstructions();
QString askInstructions(const MachineWords &words);
QString checkInstructions(const MachineWords &words);
QString cacheInstructions(const MachineWords &words);

/// Percentages are cut off towards zero.
QString explainProcess(const MachineWords &words, const ProcessSample &process);
QString explainLoginItem(const MachineWords &words, const LoginItem &item);
/// freedText is a size for people, or empty when nothing was freed.
QString weeklySummary(const QString &freedText, qint64 attentionCount);
QString ask(const MachineWords &words, const QString &question, const QString &systemContext);
/// What a full check found, a plain phrase each.
QStringList checkFindings(const MachineWords &words, qint64 itemCount, const QString &totalBytesText,
                          const std::optional<QString> &topProcessName, qint64 loginItemCount);
QString checkSummary(const MachineWords &words, const QStringList &findings);
QString cacheFolder(const MachineWords &words, const QString &name, const QString &sizeText);

} // namespace swabby::Prompts
