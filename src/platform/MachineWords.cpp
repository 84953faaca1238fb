#include "platform/MachineWords.h"

#include "platform/HarmlessText.h"

namespace swabby {

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
