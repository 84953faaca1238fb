#include "ui/qmltypes/RemovableList.h"

namespace swabby {

void RemovableList::show(const std::vector<RemovableItem> &items, const RowOf &rowOf)
{
    QList<RemovableRowText> rows;
    rows.reserve(static_cast<qsizetype>(items.size()));
    for (const RemovableItem &item : items)
        rows.append(rowOf(item));
    m_rows.show(rows, [](const RemovableRowText &row) { return row.id; });
}

void RemovableList::setText(const ScanText &text)
{
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT changed();
}

} // namespace swabby
