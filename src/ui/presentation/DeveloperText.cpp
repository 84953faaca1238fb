#include "ui/presentation/DeveloperText.h"

#include "cleanup/DeveloperCleanup.h"
#include "cleanup/RemovalRun.h"
#include "engine/ByteCount.h"
#include "engine/SaturatedBytes.h"
#include "ui/presentation/PlainWords.h"

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

QString clutterText(const std::vector<RemovableItem> &clutter)
{
    const std::int64_t bytes = totalBytes(clutter);
    return bytes > 0 ? fileByteCount(bytes) + QStringLiteral(" can be cleared") : QString();
}

} // namespace swabby
