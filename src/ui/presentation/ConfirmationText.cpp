#include "ui/presentation/ConfirmationText.h"

#include "ai/ExplainService.h"
#include "engine/ByteCount.h"
#include "platform/Utf8.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/ProcessText.h"

#include <algorithm>

namespace swabby {
namespace {

/// The path as the desktop can be asked to show it; empty when its bytes are no text.
QString showablePath(const std::filesystem::path &path)
{
    return isUtf8(path.native()) ? textOf(path.native()) : QString();
}

QString shownFolder(const std::filesystem::path &path, const QString &home)
{
    const QString folder = textOf(path.parent_path().native());
    if (folder == home || folder.startsWith(home + QLatin1Char('/')))
        return oneLine(QLatin1Char('~') + folder.mid(home.size()));
    return oneLine(folder);
}

/// Whether it is left on purpose.
bool stays(const RemovalEffect &effect)
{
    return effect.fate == QLatin1String("stays");
}

RemovalLine lineOf(const RemovableItem &item, int place, bool isUnfolded)
{
    const QString forGood = ConfirmationBuilder::goneForGood({&item, 1});
    RemovalLine line;
    line.key = QString::number(place);
    line.item = place;
    line.isItem = true;
    line.isUnfolded = isUnfolded;
    line.title = oneLine(item.title);
    line.note = forGood.isEmpty() ? oneLine(item.subtitle) : forGood;
    line.isForGood = !forGood.isEmpty();
    line.size = fileByteCount(item.sizeBytes);
    return line;
}

} // namespace

QList<RemovalDetail> removalDetails(const RemovableItemKind &kind, const QString &home)
{
    QList<RemovalDetail> details;
    for (const RemovalEffect &effect : removalEffects(kind))
        if (effect.path.empty())
            details.append({oneLine(effect.name), {}, oneLine(effect.fate), {}, stays(effect)});
        else
            details.append({oneLine(textOf(effect.path.filename().native())), shownFolder(effect.path, home),
                            oneLine(effect.fate), showablePath(effect.path), stays(effect)});
    return details;
}

QList<RemovalLine> removalLines(const std::vector<RemovableItem> &items, const std::set<int> &unfolded,
                                const QString &home)
{
    const bool isAlone = items.size() == 1;
    QList<RemovalLine> lines;
    for (int place = 0; place < static_cast<int>(items.size()); ++place) {
        const RemovableItem &item = items.at(static_cast<std::size_t>(place));
        const bool isUnfolded = isAlone || unfolded.contains(place);
        if (!isAlone)
            lines.append(lineOf(item, place, isUnfolded));
        if (!isUnfolded)
            continue;
        QList<RemovalDetail> details = removalDetails(item.kind, home);
        std::stable_partition(details.begin(), details.end(),
                              [](const RemovalDetail &detail) { return !detail.stays; });
        for (int row = 0; row < details.size(); ++row) {
            RemovalLine line;
            line.key = QStringLiteral("%1/%2").arg(place).arg(row);
            line.item = place;
            line.isInGroup = !isAlone;
            line.detail = details.at(row);
            lines.append(line);
        }
    }
    return lines;
}

ConfirmationText confirmationText(const ConfirmationInfo &info, const ProgramTile &tile)
{
    ConfirmationText text;
    text.title = oneLine(info.title);
    text.message = oneLine(info.message);
    text.warning = info.warning;
    text.confirmLabel = info.confirmLabel;
    text.tile = tile;
    if (info.trustRatio) {
        text.trust = trustText(*info.trustRatio);
        text.trustSymbol = trustSymbol(*info.trustRatio);
    }
    if (info.recommendation) {
        text.recommendation = recommendationLabel(*info.recommendation);
        text.recommendationTint = tintOf(*info.recommendation);
    }
    return text;
}

QString dockerClutterText()
{
    return QStringLiteral("Unused images, stopped containers, build cache");
}

QString trustText(int trustRatio)
{
    return QStringLiteral("Trust %1 of 100").arg(trustRatio);
}

QString quitLabelText(const QString &programName)
{
    return programName.isEmpty() ? QString() : QStringLiteral("Quit ") + oneLine(programName);
}

Tint tintOf(ActionRecommendation recommendation)
{
    switch (recommendation) {
    case ActionRecommendation::keep:
        return Tint::green;
    case ActionRecommendation::quit:
        return Tint::orange;
    case ActionRecommendation::forceQuit:
        return Tint::red;
    }
    return Tint::green;
}

} // namespace swabby
