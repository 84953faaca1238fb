#include "ui/presentation/DeveloperText.h"

#include "cleanup/DeveloperCleanup.h"
#include "engine/ByteCount.h"
#include "ui/presentation/PlainWords.h"

#include <algorithm>

namespace swabby {

QList<DockerRowText> dockerRowTexts(const std::vector<DockerRow> &rows)
{
    const auto total = static_cast<double>(DeveloperCleanup::estimatedReclaimableBytes(rows));
    QList<DockerRowText> texts;
    for (const DockerRow &row : rows) {
        const std::int64_t bytes = parseByteString(row.reclaimable.toStdString());
        texts.append(
            {oneLine(row.type), fileByteCount(bytes), total > 0 ? static_cast<double>(bytes) / total : 0});
    }
    return texts;
}

QString dockerNoteText(const std::vector<DockerRow> &rows)
{
    const bool hasVolumes = std::ranges::any_of(rows, [](const DockerRow &row) {
        return row.type == QLatin1String("Local Volumes") &&
               parseByteString(row.reclaimable.toStdString()) > 0;
    });
    return hasVolumes ? QStringLiteral("The figure is Docker's own and counts local volumes, which stay.")
                      : QString();
}

} // namespace swabby
