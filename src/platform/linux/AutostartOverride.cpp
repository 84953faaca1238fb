#include "platform/linux/AutostartOverride.h"

#include "platform/linux/DesktopEntry.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QList>

namespace swabby {
namespace {

const QByteArray hiddenKey = "Hidden";
/// Its value tells what the rest of the text was.
const QByteArray noteKey = "X-Swabby-TurnedOff";
const QByteArray header = "[Desktop Entry]";

QByteArray keyOf(const QByteArray &line)
{
    return line.left(line.indexOf('=')).trimmed();
}

/// The text without the lines of those keys in the entry's own group, where that line begins it; an empty
/// line adds nothing.
QByteArray edited(const QByteArray &text, const QList<QByteArray> &dropped, const QByteArray &added = {})
{
    QList<QByteArray> lines;
    bool isInEntry = false;
    bool isPastEntry = false;
    for (const QByteArray &line : text.split('\n')) {
        const bool isGroup = line.trimmed().startsWith('[');
        if (isInEntry && !isGroup && line.contains('=') && dropped.contains(keyOf(line)))
            continue;
        lines.append(line);
        if (!isGroup)
            continue;
        isPastEntry = isPastEntry || isInEntry;
        isInEntry = !isPastEntry && line.trimmed() == header;
        if (isInEntry && !added.isEmpty())
            lines.append(added);
    }
    return lines.join('\n');
}

bool isEntry(const QByteArray &text)
{
    return !desktopEntryFrom(text.toStdString()).type.empty();
}

QByteArray noteOn(const QByteArray &text)
{
    return noteKey + '=' + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex();
}

} // namespace

QByteArray turnedOffCopy(const QByteArray &entry)
{
    const QByteArray hidden = edited(isEntry(entry) ? entry : header + "\nType=Application\n",
                                     {hiddenKey, noteKey}, hiddenKey + "=true");
    return edited(hidden, {}, noteOn(hidden));
}

bool isTurnedOffCopy(const QByteArray &entry)
{
    return edited(entry, {noteKey}) != entry && desktopEntryFrom(entry.toStdString()).isHidden;
}

bool isUntouchedCopy(const QByteArray &entry)
{
    const QByteArray rest = edited(entry, {noteKey});
    return rest != entry && edited(rest, {}, noteOn(rest)) == entry;
}

QByteArray startingAs(const QByteArray &entry, const QByteArray &start)
{
    const QByteArray fresh = header + "\nType=Application\nName=Swabby\nComment=Looks after this computer\n"
                                      "Icon=com.swabby.app\n";
    return edited(
        isEntry(entry) ? entry : fresh,
        {"Exec", "TryExec", "OnlyShowIn", "NotShowIn", "X-GNOME-Autostart-enabled", hiddenKey, noteKey},
        start);
}

QByteArray turnedOnAgain(const QByteArray &entry)
{
    return edited(entry, {hiddenKey, noteKey});
}

} // namespace swabby
