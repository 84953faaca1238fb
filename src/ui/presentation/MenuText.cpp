#include "ui/presentation/MenuText.h"

#include "flows/cleanup/ConfirmationBuilder.h"
#include "platform/desktop/TrayMenu.h"
#include "startup/LoginItem.h"

namespace swabby {
namespace {

MenuEntry entry(RowCommand command, const QString &label, const QString &hint = {})
{
    return {static_cast<int>(command), label, hint};
}

} // namespace

QList<MenuEntry> itemMenu()
{
    QList<MenuEntry> entries;
    bool isParted = false;
    for (const TrayMenuLine &line : trayMenu) {
        if (line.command)
            entries.append({static_cast<int>(*line.command), QString::fromUtf8(line.text), {}, isParted});
        isParted = !line.command;
    }
    return entries;
}

QList<MenuEntry> processMenu()
{
    return {
        entry(RowCommand::forceQuit, QStringLiteral("Force Quit"), ConfirmationBuilder::forceQuitWarning())};
}

QList<MenuEntry> startupMenu(const LoginItem &item, const MachineWords &words)
{
    QList<MenuEntry> entries = {entry(RowCommand::openLoginItemSettings, words.loginItemSettings)};
    if (!item.plistPath.isEmpty())
        entries.prepend(entry(RowCommand::reveal, words.reveal));
    return entries;
}

QList<MenuEntry> textMenu(bool hasText, bool hasSelection, bool canPaste)
{
    const auto line = [](TextCommand command, const QString &label, bool isAvailable, bool isParted = false) {
        return MenuEntry{static_cast<int>(command), label, {}, isParted, isAvailable};
    };
    return {line(TextCommand::cut, QStringLiteral("Cut"), hasSelection),
            line(TextCommand::copy, QStringLiteral("Copy"), hasSelection),
            line(TextCommand::paste, QStringLiteral("Paste"), canPaste),
            line(TextCommand::selectAll, QStringLiteral("Select All"), hasText, true)};
}

QString explainLabel()
{
    return QStringLiteral("What is this?");
}

} // namespace swabby
