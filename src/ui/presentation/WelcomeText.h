#pragma once

#include "platform/MachineWords.h"
#include "platform/desktop/TrayItem.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// One of the things said at the first start.
struct WelcomePoint {
    Q_GADGET
    QML_VALUE_TYPE(welcomePoint)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString heading MEMBER heading)
    Q_PROPERTY(QString text MEMBER text)

public:
    QString symbol;
    QString heading;
    QString text;

    bool operator==(const WelcomePoint &) const = default;
};

/// In reading order. Where nothing is in the menu bar, nothing is promised there; where it is certain that
/// nothing will be, how Swabby is left.
QList<WelcomePoint> welcomePoints(TrayItem::Place place, const MachineWords &words);

/// Beside whatever offers a removal, too.
QString untilConfirmedText();

} // namespace swabby
