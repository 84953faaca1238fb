#include "platform/linux/StartupLabels.h"

#include <QtCore/QFileInfo>

#include <map>
#include <utility>

namespace swabby {

void tellApart(std::vector<StartupEntry> &entries)
{
    std::map<std::pair<LoginItemScope, QString>, int> counts;
    for (const StartupEntry &entry : entries)
        ++counts[{entry.scope, entry.label}];
    for (StartupEntry &entry : entries)
        if (counts[{entry.scope, entry.label}] > 1)
            entry.label += QStringLiteral(" (%1)").arg(QFileInfo(entry.definitionPath).fileName());
}

} // namespace swabby
