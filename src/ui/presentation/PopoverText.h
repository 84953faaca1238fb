#pragma once

#include "engine/SystemStats.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QDateTime>
#include <QtCore/QList>
#include <QtCore/QLocale>
#include <QtCore/QObject>
#include <QtCore/QRect>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>

namespace swabby {

/// One of the small panel's figures; pressing it leads to its section.
struct PopoverChip {
    Q_GADGET
    QML_VALUE_TYPE(popoverChip)
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(int tint READ tintIndex)
    Q_PROPERTY(QString section MEMBER section)

public:
    QString symbol;
    QString label;
    QString value;
    Tint tint = Tint::accent;
    QString section; ///< the section's name

    int tintIndex() const { return static_cast<int>(tint); }
    bool operator==(const PopoverChip &) const = default;
};

/// Speed, memory, storage and, on a machine that has one, the battery. The speed is a real figure only
/// once the machine has been looked at for a while.
QList<PopoverChip> popoverChips(const SystemStats &stats, bool speedIsKnown);

/// "Updated 9:41:07 AM", in the locale's way; another sentence before there was a time.
QString updatedText(const std::optional<QDateTime> &time, const QLocale &locale);

/// Where a panel of that size stands beside the item: below one in the upper half of the screen, else above,
/// and always inside the screen's free area.
QPoint popoverPosition(const QRect &item, const QSize &panel, const QRect &available);

} // namespace swabby
