#include "ui/presentation/Gauges.h"
#include "ui/presentation/LineBreaks.h"
#include "ui/presentation/SvgPath.h"
#include "ui/presentation/SymbolTable.h"
#include "ui/presentation/ThemeColors.h"

#include <QtGui/QFontMetricsF>
#include <QtTest/QTest>

using namespace swabby;

class LookTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textCanBeRead()
    {
        for (const bool isDark : {false, true})
            for (const char *accent : {"", "#f6d32d", "#ffffff", "#000000", "#d56199", "#3a944a", "#00008b"})
                verifyContrast(isDark, QColor(QLatin1String(accent)));
    }

    void everyDrawingStaysInItsBox()
    {
        QVERIFY(findSymbol(batterySymbol(false)) != nullptr); // the views' own are seen in their windows
        for (const QString &name : symbolNames()) {
            const SymbolDrawing &drawing = *findSymbol(name);
            QRectF bounds;
            for (const char *data : {drawing.stroke, drawing.fill})
                bounds |= svgPath(QLatin1String(data)).boundingRect();
            QVERIFY2(QRectF(1, 1, 22.4, 22).contains(bounds), qPrintable(name));
            // A dash, dots and an arrow are flat by nature.
            const bool isFlat =
                name == u"minus"_qs || name == u"ellipsis"_qs || name.startsWith(u"chevron"_qs);
            const qreal shorter = qMin(bounds.width(), bounds.height());
            QVERIFY2(qMax(bounds.width(), bounds.height()) >= 12 && (isFlat || shorter >= 8),
                     qPrintable(name));
        }
    }

    void pathsAreReadAsWritten()
    {
        const QRectF circle = svgPath(u"M12 3 A9 9 0 0 1 12 21 A9 9 0 0 1 12 3 Z"_qs).boundingRect();
        QVERIFY(qAbs(circle.left() - 3) < 0.01 && qAbs(circle.right() - 21) < 0.01);
        // The same corner as a small arc turning right, and as a large one turning left.
        QVERIFY(svgPath(u"M0 0 A10 10 0 0 1 10 10"_qs).boundingRect().contains(QPointF(6.9, 2.9)));
        QVERIFY(qAbs(svgPath(u"M0 0 A10 10 0 1 0 10 10"_qs).boundingRect().width() - 20) < 0.1);
        QCOMPARE(svgPath(u"m1 1 l2,0 h2 v-3 z"_qs), svgPath(u"M1 1 L3 1 H5 V-2 Z"_qs));
        QVERIFY(svgPath(u"L"_qs).isEmpty());
        QVERIFY(svgPath(u"M1 1 X9 9 L3 3"_qs).boundingRect().isEmpty());
    }

    // In lines as wide as "one two three four".
    void noWordStandsAloneOnTheLastLine()
    {
        const double width = QFontMetricsF(QFont()).horizontalAdvance(u"one two three four"_qs) + 2;
        for (const auto &[text, isAlone] :
             {std::pair(u"one two three four end"_qs, true), std::pair(u"one two three four"_qs, false),
              std::pair(u"one two three four at end"_qs, false),
              std::pair(u"one two three four\nend"_qs, false), std::pair(u"onetwothreefour end"_qs, false)}) {
            const double room = roomForLastLine(text, QFont(), width);
            QVERIFY2((room > 0) == isAlone, qPrintable(text));
            QCOMPARE(roomForLastLine(text, QFont(), width - room), 0.0);
        }
    }

private:
    /// The accent is the desktop's own, if any.
    static void verifyContrast(bool isDark, const QColor &accent)
    {
        const ThemeColors &own = isDark ? darkColors() : lightColors();
        const ThemeColors colors = accent.isValid() ? withAccent(own, accent) : own;
        const auto verify = [&](const char *what, const QColor &text, const QColor &ground, double least) {
            const double ratio = contrastRatio(text, ground);
            QVERIFY2(
                ratio >= least,
                qPrintable(
                    u"%1, %2 %3: %4"_qs.arg(QLatin1String(what)).arg(isDark).arg(accent.name()).arg(ratio)));
        };
        for (const QColor &ground : {colors.window, colors.card, colors.sidebar}) {
            verify("primary", colors.primary, ground, 4.5);
            verify("a symbol in the accent", colors.accent, ground, 3);
            for (const QColor &fill : {colors.quietFill, colors.hoverFill})
                verify("a button's words", colors.primary, laidOver(fill, ground), 4.5);
        }
        verify("a tab's words", colors.inks[0], laidOver(colors.quietFill, colors.window), 4.5);
        verify("what destroys", colors.onAccent, colors.dangerFill, 4.5);
        verify("on the accent", colors.onAccent, colors.accentFill, 4.5);
        // A translucent wash lies on the window or on a card.
        for (const QColor &ground : {colors.window, colors.card}) {
            verify("secondary", colors.secondary, ground, 4.5);
            for (std::size_t tint = 0; tint < tintCount; ++tint) {
                const QColor wash = laidOver(colors.washes[tint], ground);
                verify("a tint's words", colors.inks[tint], wash, 4.5);
                verify("words on a tint", colors.primary, wash, 4.5);
                verify("a button on a tint", colors.primary, laidOver(colors.hoverFill, wash), 4.5);
                verify("a tint's words on a card", colors.inks[tint], colors.card, 4.5);
            }
        }
        for (const QColor &tile : tileColors())
            verify("a tile's letter", Qt::white, tile, 4.5);
    }
};

QTEST_MAIN(LookTest)
#include "LookTest.moc"
