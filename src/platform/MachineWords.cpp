#include "platform/MachineWords.h"

#include "platform/HarmlessText.h"

namespace swabby {

std::vector<MachineWords::Asking> MachineWords::macPermissions()
{
    return {
        {QStringLiteral("macOS does not let Swabby look into the Trash, so what lies there is missing here. "
                        "Allow Full Disk Access, then open Swabby again."),
         QStringLiteral("Open Full Disk Access")},
        {QStringLiteral("macOS did not let Swabby remove an app. If Swabby may do that, allow it under "
                        "App Management, or move the app to the Trash in Finder."),
         QStringLiteral("Open App Management")},
        {QStringLiteral("macOS does not let Swabby notify you, so none of these will appear."),
         QStringLiteral("Open Notifications")},
        {QStringLiteral("macOS does not let Swabby ask System Events, so classic login items are missing "
                        "here. Allow it under Automation."),
         QStringLiteral("Open Automation")}};
}

QString MachineWords::marked(const QString &name, qsizetype most) const
{
    return nameMarks[0] + unmarked(cutTo(oneLine(name), most)) + nameMarks[1];
}

QString MachineWords::unmarked(QString name) const
{
    for (const QString &mark : nameMarks)
        if (!mark.isEmpty())
            name.remove(mark);
    return name;
}

} // namespace swabby
