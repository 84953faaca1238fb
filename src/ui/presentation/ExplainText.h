#pragma once

#include "ai/ExplainService.h"
#include "platform/MachineWords.h"
#include "ui/presentation/ProgramTile.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// What is explained, as its sheet shows it around the explanation.
struct ExplainText {
    Q_GADGET
    QML_VALUE_TYPE(explainText)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(swabby::ProgramTile tile MEMBER tile)
    Q_PROPERTY(QString recommendation MEMBER recommendation)
    Q_PROPERTY(int recommendationTint READ recommendationTintIndex)
    Q_PROPERTY(QString trust MEMBER trust)
    Q_PROPERTY(QString trustSymbol MEMBER trustSymbol)
    Q_PROPERTY(QString figures MEMBER figures)
    Q_PROPERTY(QString actionLabel MEMBER actionLabel)
    Q_PROPERTY(QString actionHint MEMBER actionHint)

public:
    QString name;
    ProgramTile tile;
    QString recommendation;
    Tint recommendationTint = Tint::green;
    QString trust; ///< "Trust 85"; empty for a startup item
    QString trustSymbol;
    QString figures;     ///< what it takes, in small; empty for a startup item
    QString actionLabel; ///< "Force Quit", "Disable", or the way to the system's settings; may be empty
    QString actionHint;

    int recommendationTintIndex() const { return static_cast<int>(recommendationTint); }
};

ExplainText explainText(const ExplainRequest &request, const MachineWords &words);

} // namespace swabby
