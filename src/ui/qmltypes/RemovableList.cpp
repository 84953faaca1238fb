#include "ui/qmltypes/RemovableList.h"

#include <algorithm>
#include <utility>

namespace swabby {

void RemovableList::show(const std::vector<RemovableItem> &items, const RowOf &rowOf)
{
    QList<RemovableRowText> rows;
    rows.reserve(static_cast<qsizetype>(items.size()));
    for (const RemovableItem &item : items)
        rows.append(rowOf(item));
    m_rows.show(rows, [](const RemovableRowText &row) { return row.id; });
    const auto selected = static_cast<int>(
        std::count_if(rows.begin(), rows.end(), [](const RemovableRowText &row) { return row.isSelected; }));
    if (std::exchange(m_selectedCount, selected) != selected)
        Q_EMIT changed();
}

void RemovableList::setText(const ScanText &text)
{
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT changed();
}

} // namespace swabby
