#include "ui/qmltypes/SymbolItem.h"

#include "ui/presentation/SvgPath.h"
#include "ui/presentation/SymbolTable.h"

#include <QtGui/QPainter>

namespace swabby {

SymbolItem::SymbolItem(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setImplicitSize(16, 16);
    setAntialiasing(true);
    connect(this, &SymbolItem::changed, this, [this] { update(); });
}

void SymbolItem::paint(QPainter *painter)
{
    const SymbolDrawing *drawing = findSymbol(m_name);
    if (drawing == nullptr)
        return;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->scale(width() / 24, height() / 24);
    const QPen pen(m_color, m_weight, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter->fillPath(svgPath(QLatin1String(drawing->fill)), m_color);
    painter->strokePath(svgPath(QLatin1String(drawing->stroke)), pen);
    painter->setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter->strokePath(svgPath(QLatin1String(drawing->cut)),
                        QPen(Qt::black, 2.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace swabby
