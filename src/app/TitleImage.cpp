#include "app/TitleImage.h"

#include "app/TrayDigits.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QFontMetricsF>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <cmath>

namespace swabby {
namespace {

constexpr double topMargin = 6;
constexpr double lineGap = 2;
constexpr double bottomMargin = 1;
const QString nameLine = QStringLiteral("Swabby");

QFont titleFont(int pixels)
{
    QFont font = QFontDatabase::hasFamily(QStringLiteral("Inter")) ? QFont(QStringLiteral("Inter"))
                                                                   : QGuiApplication::font();
    font.setPixelSize(pixels);
    font.setWeight(QFont::DemiBold);
    return font;
}

/// Draws a line in which every digit takes the same room, whichever it is; without a painter it only
/// measures. Gives the line's width.
double drawTabular(QPainter *painter, const QFontMetricsF &metrics, QPointF at, const QString &text)
{
    double widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    double width = 0;
    for (const QChar sign : text) {
        const double own = metrics.horizontalAdvance(sign);
        const double room = sign.isDigit() ? widest : own;
        if (painter != nullptr)
            painter->drawText(at + QPointF(width + (room - own) / 2, 0), sign);
        width += room;
    }
    return width;
}

QImage clearImage(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

QColor titleColor(TitleColor color)
{
    switch (color) {
    case TitleColor::green:
        return QColor(0x30, 0xd1, 0x58);
    case TitleColor::yellow:
        return QColor(0xff, 0xd6, 0x0a);
    case TitleColor::red:
        break;
    }
    return QColor(0xff, 0x45, 0x3a);
}

QImage renderTitleImage(const MenuBarTitle &title, double devicePixelRatio)
{
    const QFont nameFont = titleFont(8);
    const QFont loadFont = titleFont(11);
    const QFontMetricsF nameMetrics(nameFont);
    const QFontMetricsF loadMetrics(loadFont);
    const double nameWidth = nameMetrics.horizontalAdvance(nameLine);
    const double loadWidth = drawTabular(nullptr, loadMetrics, {}, title.text);
    const double width = std::max(nameWidth, loadWidth);
    const double height = nameMetrics.height() + topMargin + lineGap + loadMetrics.height() + bottomMargin;

    QImage image = clearImage((QSizeF(width, height) * devicePixelRatio).toSize());
    image.setDevicePixelRatio(devicePixelRatio);
    QPainter painter(&image);
    painter.setFont(nameFont);
    painter.setPen(QColor::fromRgbF(1, 1, 1, 0.65F));
    painter.drawText(QPointF((width - nameWidth) / 2, topMargin + nameMetrics.ascent()), nameLine);
    painter.setFont(loadFont);
    painter.setPen(titleColor(title.color));
    drawTabular(
        &painter, loadMetrics,
        QPointF((width - loadWidth) / 2, topMargin + nameMetrics.height() + lineGap + loadMetrics.ascent()),
        title.text);
    return image;
}

QImage renderTraySquare(const MenuBarTitle &title, int size)
{
    QImage image = clearImage(QSize(size, size));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1c, 0x1c, 0x1e));
    painter.drawRoundedRect(QRectF(0, 0, size, size), size * 0.2, size * 0.2);

    // Three or four signs across a small square: filling its width and growing tall beats keeping shape.
    const QPainterPath digits = trayDigits(title.text);
    const QRectF bounds = digits.boundingRect();
    const double margin = std::max(4 / 3.0, std::floor(size / 12.0)); // each third of a pixel counts
    const double across = (size - 2 * margin) / (bounds.width() + trayDigitPen);
    const double upright = std::min((size - 3 * margin) / (bounds.height() + trayDigitPen), across * 1.5);
    QTransform place = QTransform::fromTranslate(size / 2.0, size / 2.0);
    place.scale(across, upright).translate(-bounds.center().x(), -bounds.center().y());
    painter.strokePath(place.map(digits), QPen(titleColor(title.color), trayDigitPen * across, Qt::SolidLine,
                                               Qt::RoundCap, Qt::RoundJoin));
    return image;
}

QImage applicationPicture(int side)
{
    constexpr double unit = 64;
    QImage image = clearImage(QSize(side, side));
    QPainter painter(&image);
    painter.scale(side / unit, side / unit);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fill(0, 0, unit, unit);
    fill.setColorAt(0, QColor(0x5a, 0xb8, 0xff));
    fill.setColorAt(1, QColor(0x0a, 0x6b, 0xe6));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(4, 4, 56, 56), 14, 14);
    painter.setPen(QPen(Qt::white, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QPainterPath stroke(QPointF(42, 24));
    stroke.cubicTo(38, 15, 21, 17, 22, 26);
    stroke.cubicTo(23, 34, 42, 30, 42, 39);
    stroke.cubicTo(42, 49, 24, 49, 21, 40);
    painter.drawPath(stroke);
    return image;
}

QIcon applicationIcon()
{
    return QIcon(QPixmap::fromImage(applicationPicture(64)));
}

} // namespace swabby
