#pragma once

#include "platform/MachineWords.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

struct LoginItem;

/// What a row's own menu leads to.
enum class RowCommand { forceQuit, reveal, openLoginItemSettings };

/// What a text field's menu does.
enum class TextCommand { cut, copy, paste, selectAll };

/// A line of a menu. It carries what it does, which is handed back when it is chosen.
struct MenuEntry {
    Q_GADGET
    QML_VALUE_TYPE(menuEntry)
    Q_PROPERTY(int command MEMBER command)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(QString hint MEMBER hint)
    Q_PROPERTY(bool isParted MEMBER isParted)
    Q_PROPERTY(bool isAvailable MEMBER isAvailable)

public:
    int command = 0; ///< a TrayCommand in the item's menu, a TextCommand in a field's, else a RowCommand
    QString label;
    QString hint;            ///< the tooltip
    bool isParted = false;   ///< a line stands between it and the one above
    bool isAvailable = true; ///< it can be chosen now

    bool operator==(const MenuEntry &) const = default;
};

/// The menu of the item in the menu bar.
QList<MenuEntry> itemMenu();
/// What can be done about a program beside its buttons.
QList<MenuEntry> processMenu();
QList<MenuEntry> startupMenu(const LoginItem &item, const MachineWords &words);

/// What can be done to the text of a field, as it stands.
QList<MenuEntry> textMenu(bool hasText, bool hasSelection, bool canPaste);

/// "What is this?", on buttons too.
QString explainLabel();

} // namespace swabby
