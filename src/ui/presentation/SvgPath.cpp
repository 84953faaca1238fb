#include "ui/presentation/SvgPath.h"

#include <QtCore/QtMath>

#include <cmath>
#include <optional>

namespace swabby {
namespace {

class PathReader {
public:
    explicit PathReader(const QString &data) : m_data(data) {}

    QPainterPath read()
    {
        while (readCommand()) {
        }
        return m_path;
    }

private:
    void skipSeparators()
    {
        while (m_at < m_data.size() && (m_data.at(m_at).isSpace() || m_data.at(m_at) == QLatin1Char(',')))
            ++m_at;
    }

    std::optional<double> number()
    {
        skipSeparators();
        const qsizetype start = m_at;
        if (m_at < m_data.size() &&
            (m_data.at(m_at) == QLatin1Char('-') || m_data.at(m_at) == QLatin1Char('+')))
            ++m_at;
        while (m_at < m_data.size() && (m_data.at(m_at).isDigit() || m_data.at(m_at) == QLatin1Char('.')))
            ++m_at;
        bool isNumber = false;
        const double value = m_data.mid(start, m_at - start).toDouble(&isNumber);
        return isNumber ? std::optional(value) : std::nullopt;
    }

    std::optional<QPointF> point()
    {
        const auto x = number();
        const auto y = number();
        if (!x || !y)
            return std::nullopt;
        return QPointF(*x, *y) + origin();
    }

    QPointF origin() const { return m_isRelative ? m_path.currentPosition() : QPointF(); }

    bool readCommand()
    {
        skipSeparators();
        if (m_at >= m_data.size())
            return false;
        if (m_data.at(m_at).isLetter()) {
            m_command = m_data.at(m_at).toUpper().toLatin1();
            m_isRelative = m_data.at(m_at).isLower();
            ++m_at;
        }
        return draw();
    }

    bool draw()
    {
        switch (m_command) {
        case 'M':
            return drawTo([this](QPointF to) {
                m_path.moveTo(to);
                m_command = 'L'; // further pairs after a move are lines
            });
        case 'L':
            return drawTo([this](QPointF to) { m_path.lineTo(to); });
        case 'H':
            return drawAlong(
                [this](double x) { m_path.lineTo(x + origin().x(), m_path.currentPosition().y()); });
        case 'V':
            return drawAlong(
                [this](double y) { m_path.lineTo(m_path.currentPosition().x(), y + origin().y()); });
        case 'C':
            return cubic();
        case 'Q':
            return quadratic();
        case 'A':
            return arc();
        case 'Z':
            m_path.closeSubpath();
            m_command = 0;
            return true;
        default:
            return false;
        }
    }

    template <typename Function>
    bool drawTo(Function function)
    {
        const auto to = point();
        if (to)
            function(*to);
        return to.has_value();
    }

    template <typename Function>
    bool drawAlong(Function function)
    {
        const auto to = number();
        if (to)
            function(*to);
        return to.has_value();
    }

    bool cubic()
    {
        const auto first = point();
        const auto second = point();
        const auto to = point();
        if (first && second && to)
            m_path.cubicTo(*first, *second, *to);
        return first && second && to;
    }

    bool quadratic()
    {
        const auto control = point();
        const auto to = point();
        if (control && to)
            m_path.quadTo(*control, *to);
        return control && to;
    }

    bool arc()
    {
        const auto radiusX = number();
        const auto radiusY = number();
        const auto tilt = number();
        const auto large = number();
        const auto sweep = number();
        const auto to = point();
        if (!radiusX || !radiusY || !tilt || !large || !sweep || !to)
            return false;
        // The symbols have round arcs only, so the second radius and the tilt say nothing new.
        roundArc(*radiusX, *large != 0, *sweep != 0, *to);
        return true;
    }

    void roundArc(double radius, bool isLarge, bool isClockwise, QPointF to)
    {
        const QPointF from = m_path.currentPosition();
        const QPointF half = (to - from) / 2;
        const double halfLength = std::hypot(half.x(), half.y());
        if (halfLength == 0 || radius <= 0)
            return;
        const double reach = std::max(radius, halfLength);
        const double height = std::sqrt(reach * reach - halfLength * halfLength);
        const double side = isLarge == isClockwise ? 1 : -1;
        const QPointF center = from + half + QPointF(half.y(), -half.x()) / halfLength * height * side;
        const double start = qRadiansToDegrees(std::atan2(center.y() - from.y(), from.x() - center.x()));
        const double end = qRadiansToDegrees(std::atan2(center.y() - to.y(), to.x() - center.x()));
        double length = end - start;
        if (isClockwise && length > 0)
            length -= 360;
        if (!isClockwise && length < 0)
            length += 360;
        m_path.arcTo(QRectF(center.x() - reach, center.y() - reach, 2 * reach, 2 * reach), start, length);
    }

    const QString &m_data;
    qsizetype m_at = 0;
    char m_command = 0;
    bool m_isRelative = false;
    QPainterPath m_path;
};

} // namespace

QPainterPath svgPath(const QString &data)
{
    return PathReader(data).read();
}

} // namespace swabby
