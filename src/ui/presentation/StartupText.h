#pragma once

#include "flows/startup/StartupFlow.h"
#include "ui/presentation/MenuText.h"
#include "ui/presentation/ProgramTile.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// Something that starts by itself, as its row shows it.
struct StartupRowText {
    Q_GADGET
    QML_VALUE_TYPE(startupRowText)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(swabby::ProgramTile tile MEMBER tile)
    Q_PROPERTY(QString badge MEMBER badge)
    Q_PROPERTY(int badgeTint READ badgeTintIndex)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(bool canDisable MEMBER canDisable)
    Q_PROPERTY(QList<swabby::MenuEntry> menu MEMBER menu)

public:
    QString id;
    QString label;
    ProgramTile tile;
    QString badge; ///< empty: no badge
    Tint badgeTint = Tint::orange;
    QString detail;
    bool canDisable = false;
    QList<MenuEntry> menu;

    int badgeTintIndex() const { return static_cast<int>(badgeTint); }
    bool operator==(const StartupRowText &) const = default;
};

/// The word when that did not work for the item of that label.
QString startupFailureText(StartupChange failed, const QString &label);

/// The row of an item as far as it only tells: its detail, and the badge that says why it is worth a look.
StartupRowText judgedRowText(const LoginItem &item);

/// What was turned off here.
QList<StartupRowText> disabledRowTexts(const QList<LoginItem> &items, const MachineWords &words);

QList<StartupRowText> startupRowTexts(const QList<LoginItem> &items, bool worthASecondLook,
                                      const MachineWords &words);

} // namespace swabby
