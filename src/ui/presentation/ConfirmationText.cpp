#include "ui/presentation/ConfirmationText.h"

#include "ai/ExplainService.h"
#include "platform/Utf8.h"
#include "ui/presentation/PlainWords.h"
#include "ui/presentation/ProcessText.h"

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

} // namespace

QList<RemovalDetail> removalDetails(const RemovableItem &item, const QString &home)
{
    QList<RemovalDetail> details;
    for (const RemovalEffect &effect : removalEffects(item.kind))
        if (effect.path.empty())
            details.append({oneLine(effect.name), {}, oneLine(effect.fate), {}});
        else
            details.append({oneLine(textOf(effect.path.filename().native())), shownFolder(effect.path, home),
                            oneLine(effect.fate), showablePath(effect.path)});
    return details;
}

ConfirmationText confirmationText(const ConfirmationInfo &info, const QString &programName)
{
    ConfirmationText text;
    text.title = oneLine(info.title);
    text.message = oneLine(info.message);
    text.warning = info.warning;
    text.confirmLabel = info.confirmLabel;
    if (!programName.isEmpty()) {
        text.letter = tileLetter(programName);
        text.tileColor = tileColorIndex(programName);
    }
    if (info.trustRatio)
        text.trust = trustText(*info.trustRatio);
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
    return QStringLiteral("Trust ") + QString::number(trustRatio);
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
