#pragma once

#include "ai/ExplainService.h"
#include "platform/MachineWords.h"
#include "platform/ProgramOrigins.h"
#include "ui/presentation/ProgramTile.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace swabby {

/// Something that is known without asking anybody.
struct ExplainFact {
    Q_GADGET
    QML_VALUE_TYPE(explainFact)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString value MEMBER value)

public:
    QString label;
    QString value;

    bool operator==(const ExplainFact &) const = default;
};

/// What is explained, as its sheet shows it around the explanation.
struct ExplainText {
    Q_GADGET
    QML_VALUE_TYPE(explainText)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString alias MEMBER alias)
    Q_PROPERTY(swabby::ProgramTile tile MEMBER tile)
    Q_PROPERTY(QString recommendation MEMBER recommendation)
    Q_PROPERTY(int recommendationTint READ recommendationTintIndex)
    Q_PROPERTY(QString trust MEMBER trust)
    Q_PROPERTY(QString trustSymbol MEMBER trustSymbol)
    Q_PROPERTY(QString actionLabel MEMBER actionLabel)
    Q_PROPERTY(QString actionHint MEMBER actionHint)

public:
    QString name;
    QString alias; ///< as in ProgramNames
    ProgramTile tile;
    QString recommendation;
    Tint recommendationTint = Tint::green;
    QString trust; ///< "Trust 85 of 100"; empty for a startup item
    QString trustSymbol;
    QString actionLabel; ///< "Force Quit", "Disable", or the way to the system's settings; may be empty
    QString actionHint;

    int recommendationTintIndex() const { return static_cast<int>(recommendationTint); }
};

ExplainText explainText(const ExplainRequest &request, const MachineWords &words);

/// What is known of it. No origin while it is still looked for: its facts have their lines by then, so that
/// nothing moves when it comes. now is in seconds since 1970.
QList<ExplainFact> explainFacts(const ExplainRequest &request, const std::optional<ProgramOrigin> &origin,
                                double now, const MachineWords &words);

} // namespace swabby
