#pragma once

#include "health/LeakSuspect.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// A suspected leak as its banner shows it.
struct LeakText {
    Q_GADGET
    QML_VALUE_TYPE(leakText)
    Q_PROPERTY(int pid MEMBER pid)
    Q_PROPERTY(QString headline MEMBER headline)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(bool canQuit MEMBER canQuit)

public:
    int pid = 0;
    QString headline;
    QString detail;
    bool canQuit = true;

    bool operator==(const LeakText &) const = default;
};

QList<LeakText> leakTexts(const QList<LeakSuspect> &suspects);

} // namespace swabby
