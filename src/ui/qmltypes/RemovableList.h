#pragma once

#include "ui/presentation/CleanupText.h"
#include "ui/qmltypes/RowModel.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <vector>

namespace swabby {

/// Things that can be removed as a card lists them.
class RemovableList : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(swabby::RowModel *rows READ rows CONSTANT)
    Q_PROPERTY(swabby::ScanText text READ text NOTIFY changed)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY changed)

public:
    using RowOf = std::function<RemovableRowText(const RemovableItem &)>;

    using QObject::QObject;

    void show(const std::vector<RemovableItem> &items, const RowOf &rowOf);
    void setText(const ScanText &text);

    RowModel *rows() { return &m_rows; }
    const ScanText &text() const { return m_text; }
    int selectedCount() const { return m_selectedCount; }

Q_SIGNALS:
    void changed();

private:
    RowModel m_rows{this};
    ScanText m_text;
    int m_selectedCount = 0;
};

} // namespace swabby
