#pragma once

#include "health/MainSection.h"
#include "platform/Machine.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// One of the sidebar's rows.
struct SectionRow {
    Q_GADGET
    QML_VALUE_TYPE(sectionRow)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString subtitle MEMBER subtitle)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString shortcut MEMBER shortcut)
    Q_PROPERTY(QString page MEMBER page)
    Q_PROPERTY(bool waitsForFigures MEMBER waitsForFigures)

public:
    QString name;
    QString title;
    QString subtitle;
    QString symbol;
    QString shortcut;            ///< a key sequence
    QString page;                ///< the QML file that shows it
    bool waitsForFigures = true; ///< it has nothing to show before the first refresh

    bool operator==(const SectionRow &) const = default;
};

SectionRow sectionRow(MainSection section, const MachineWords &words);
/// The sections that this machine has something for, in the sidebar's order.
QList<SectionRow> sectionRows(const Machine &machine);

} // namespace swabby
