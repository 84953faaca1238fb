#pragma once

#include "platform/ProgramIcons.h"

#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

struct LoginItem;
struct ProcessSample;

/// What stands for a program: its icon, and a letter on a tile until that is there.
struct ProgramTile {
    Q_GADGET
    QML_VALUE_TYPE(programTile)
    Q_PROPERTY(QString letter MEMBER letter)
    Q_PROPERTY(int color MEMBER color)

public:
    QString letter;  ///< empty for what is no program
    int color = 0;   ///< index into tileColors()
    IconOwner owner; ///< whose icon it is

    bool operator==(const ProgramTile &) const = default;
};

ProgramTile tileOf(const ProcessSample &process);
/// The icon is that of the program it starts.
ProgramTile tileOf(const LoginItem &item);
/// An installed application's.
ProgramTile tileOf(const QString &name, const std::filesystem::path &application);

} // namespace swabby
