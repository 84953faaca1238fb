#include "WindowTest.h"
#include "support/Table.h"

#include <algorithm>
#include <map>

using namespace swabby;

namespace {

QByteArray program(const QByteArray &row, const QByteArray &name)
{
    return row + " 1.0 1000 /Applications/" + name + ".app/Contents/MacOS/" + name;
}

} // namespace

/// Nothing moves under the pointer, however fast somebody presses.
class HeldStillTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { end(); }

    void nothingMovesUnderThePointer_data()
    {
        QTest::addColumn<QByteArray>("line");
        for (const QByteArray &line : fixture(u"ui/held_still.txt"_qs).trimmed().split('\n'))
            QTest::newRow(line) << line;
    }
    // The section, what somebody does there, what comes of it, and what is gone once the pointer is
    // elsewhere.
    void nothingMovesUnderThePointer()
    {
        QFETCH(QByteArray, line);
        const Cells row(line);
        begin();
        for (const QString &name : {u"org.a"_qs, u"org.b"_qs, u"org.c"_qs})
            m_desk->folder.writeFile(
                u"home/Library/LaunchAgents/"_qs + name + u".plist"_qs,
                "<plist version=\"1.0\"><dict><key>Label</key><string>" + name.toUtf8() +
                    "</string><key>Program</key><string>/nowhere/it</string></dict></plist>");
        for (const char *cache : {"Library/Caches/pip/x", "Library/Caches/Yarn/x"})
            m_desk->folder.writeFile(u"home/"_qs + QLatin1String(cache), "x");
        m_desk->folder.writeFile(u"home/Library/Developer/Xcode/DerivedData/x"_qs, "x");
        m_desk->folder.addTool(u"/usr/bin/du"_qs, "[ -e \"$2\" ] && echo 2000 x");
        m_desk->folder.setProcesses({program("10 1 95", "Mill"), program("11 1 40", "Wind")});
        openAt(*sectionFrom(row.text(0)));
        Places before;
        for (const QString &step : row.text(1).split(u"; "_qs)) {
            act(step.section(u' ', 0, 0), step.section(u' ', 1), before);
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY2(says(row.text(2)), qPrintable(textOf(window())));
        const Places after = places(*window().contentItem());
        QVERIFY(!before.empty());
        for (const auto &[name, place] : before) {
            const auto [first, last] = after.equal_range(name);
            const auto stays = [&](const auto &one) { return (one.second - place).manhattanLength() < 1; };
            QVERIFY2(std::any_of(first, last, stays), qPrintable(name));
        }
        if (row.text(3).isEmpty())
            return;
        QTest::mouseMove(&window(), {3, 3});
        QVERIFY2(goes(row.text(3)), qPrintable(row.text(3)));
    }

private:
    using Places = std::multimap<QString, QPointF>;

    /// Of everything that can be pressed in there.
    Places places(QQuickItem &there)
    {
        window().grabWindow();
        Places places;
        for (const QQuickItem *item : visibleItems(&there))
            if (const QString name = item->property("name").toString();
                item->activeFocusOnTab() && !name.isEmpty())
                places.emplace(name, item->mapToScene({}));
        return places;
    }
    /// The part of the page that the pointer is at; null for none.
    QQuickItem *held()
    {
        for (const QQuickItem *item : visibleItems(window().contentItem()))
            if (auto *held = item->property("held").value<QQuickItem *>())
                return held;
        return nullptr;
    }
    /// What is there before the last act on the page itself has to stay where it is.
    void act(const QString &act, const QString &name, Places &before)
    {
        if (act == u"refresh") {
            m_desk->folder.setProcesses({program("12 1 96", "Reed"), program("10 1 5", "Mill")});
            m_desk->refresh();
            return;
        }
        QVERIFY2(comes(name), qPrintable(textOf(window())));
        const QQuickItem *pressed = item(name);
        const QPoint middle = pressed->mapToScene({pressed->width() / 2, pressed->height() / 2}).toPoint();
        QVERIFY2(QRect({}, window().size()).contains(middle), qPrintable(name));
        QTest::mouseMove(&window(), middle - QPoint(1, 1));
        QTest::mouseMove(&window(), middle);
        if (QQuickItem *part = held())
            before = places(*part);
        if (act == u"press")
            QTest::mouseDClick(&window(), Qt::LeftButton, {}, middle);
    }
};

QTEST_MAIN(HeldStillTest)
#include "HeldStillTest.moc"
