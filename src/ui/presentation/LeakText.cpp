#include "ui/presentation/LeakText.h"

#include "ui/presentation/PlainWords.h"

namespace swabby {

QList<LeakText> leakTexts(const QList<LeakSuspect> &suspects)
{
    QList<LeakText> texts;
    for (const LeakSuspect &suspect : suspects)
        texts.append({suspect.pid, oneLine(leakHeadline(suspect)), leakDetail(suspect), suspect.mayBeQuit});
    return texts;
}

} // namespace swabby
