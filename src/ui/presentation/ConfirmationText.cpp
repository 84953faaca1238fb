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

/// Says of each kind of item what becomes of what.
class Details {
public:
    explicit Details(QString home) : m_home(std::move(home)) {}

    QList<RemovalDetail> operator()(const CacheEntry &entry) const
    {
        const bool isTrash = entry.path.filename() == ".Trash" || entry.path.filename() == "Trash";
        return {of(entry.path,
                   isTrash ? QStringLiteral("emptied") : QStringLiteral("deleted, comes back by itself"))};
    }

    QList<RemovalDetail> operator()(const DuplicateGroup &group) const
    {
        QList<RemovalDetail> details;
        for (const std::filesystem::path &path : group.paths)
            details.append(of(path, details.isEmpty() ? QStringLiteral("stays") : trashed));
        return details;
    }

    QList<RemovalDetail> operator()(const SimulatorRuntimeInfo &runtime) const
    {
        return {{oneLine(runtime.name), {}, QStringLiteral("deleted"), {}}};
    }

    QList<RemovalDetail> operator()(const DeepScanItem &item) const { return {of(item.path, trashed)}; }

    QList<RemovalDetail> operator()(const AppUninstall &uninstall) const
    {
        QList<RemovalDetail> details = {of(uninstall.app.path, trashed)};
        for (const AppLeftover &leftover : uninstall.leftovers)
            details.append(
                of(leftover.path, oneLine(leftover.description) + QStringLiteral(", to the Trash")));
        return details;
    }

    QList<RemovalDetail> operator()(const DerivedData & /*buildCache*/) const
    {
        return {{QStringLiteral("Everything in Xcode's build cache"), {}, QStringLiteral("deleted"), {}}};
    }

    QList<RemovalDetail> operator()(const DockerPrune & /*docker*/) const
    {
        return {{QStringLiteral("Unused images, stopped containers, build cache"),
                 {},
                 QStringLiteral("deleted by Docker"),
                 {}}};
    }

private:
    RemovalDetail of(const std::filesystem::path &path, const QString &fate) const
    {
        return {oneLine(textOf(path.filename().native())), shownFolder(path, m_home), fate,
                showablePath(path)};
    }

    const QString trashed = QStringLiteral("to the Trash");
    const QString m_home;
};

} // namespace

QList<RemovalDetail> removalDetails(const RemovableItem &item, const QString &home)
{
    return std::visit(Details(home), item.kind);
}

ConfirmationText confirmationText(const ConfirmationInfo &info, const QString &programName)
{
    ConfirmationText text;
    text.title = oneLine(info.title);
    text.message = oneLine(info.message);
    text.confirmLabel = info.confirmLabel;
    if (!programName.isEmpty()) {
        text.letter = tileLetter(programName);
        text.tileColor = tileColorIndex(programName);
    }
    if (info.trustRatio)
        text.trust = QStringLiteral("Trust ") + QString::number(*info.trustRatio);
    if (info.recommendation) {
        text.recommendation = recommendationLabel(*info.recommendation);
        text.recommendationTint = tintOf(*info.recommendation);
    }
    return text;
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
