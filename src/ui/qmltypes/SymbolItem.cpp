#include "ui/qmltypes/SymbolItem.h"

#include "ui/presentation/SvgPath.h"
#include "ui/presentation/SymbolTable.h"

#include <QtCore/QHash>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace swabby {
namespace {

/// Read once: a window draws some of them a hundred times.
struct SymbolPaths {
    QPainterPath stroke;
    QPainterPath fill;
    QPainterPath cut;
};

const SymbolPaths &pathsOf(const SymbolDrawing &drawing)
{
    thread_local QHash<const SymbolDrawing *, SymbolPaths> known;
    auto paths = known.find(&drawing);
    if (paths == known.end())
        paths = known.insert(&drawing,
                             {svgPath(QLatin1String(drawing.stroke)), svgPath(QLatin1String(drawing.fill)),
                              svgPath(QLatin1String(drawing.cut))});
    return *paths;
}

} // namespace

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
    const SymbolPaths &paths = pathsOf(*drawing);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->scale(width() / 24, height() / 24);
    const QPen pen(m_color, m_weight, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter->fillPath(paths.fill, m_color);
    painter->strokePath(paths.stroke, pen);
    painter->setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter->strokePath(paths.cut, QPen(Qt::black, 2.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace swabby
