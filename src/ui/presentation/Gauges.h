#pragma once

#include "engine/SystemStats.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// One of the overview's figures with its bar.
struct Gauge {
    Q_GADGET
    QML_VALUE_TYPE(gauge)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(QString rest MEMBER rest)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(int tint READ tintIndex)

public:
    QString symbol;
    QString title;
    QString value;       ///< the figure in large type
    QString rest;        ///< what follows it in small type
    double fraction = 0; ///< of the bar, 0–1
    Tint tint = Tint::accent;

    int tintIndex() const { return static_cast<int>(tint); }
    bool operator==(const Gauge &) const = default;
};

/// Speed, memory, storage and, on a machine that has one, the battery. The speed is a real figure only
/// once the machine has been looked at for a while.
QList<Gauge> overviewGauges(const SystemStats &stats, bool speedIsKnown);
/// The same before the first refresh.
QList<Gauge> gaugesToCome();

/// The storage in use as a fraction; all of it when the total is unknown.
double usedStorageFraction(const SystemStats &stats);
/// Red where hardly any is left.
Tint storageTint(const SystemStats &stats);

QString batterySymbol(bool isCharging);

} // namespace swabby
