#include "ui/qmltypes/RowStack.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"
#include "ui/presentation/LeakText.h"

#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <QtTest/QTest>

#include <numeric>

using namespace swabby;

namespace {

constexpr qreal rowHeight = 40;
constexpr int pageHeight = 400;

LeakText row(int number)
{
    return {number, QString::number(number), {}};
}

QList<LeakText> rowsUpTo(int count)
{
    QList<LeakText> rows;
    for (int number = 0; number < count; ++number)
        rows.append(row(number));
    return rows;
}

} // namespace

class RowStackTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_rows = std::make_unique<RowModel>();
        show(rowsUpTo(1'000));
        QJSEngine::setObjectOwnership(m_rows.get(), QJSEngine::CppOwnership);
        m_engine.addImportPath(u"qrc:/qt/qml"_qs);
        QQmlComponent component(&m_engine);
        component.setData(fixture(u"ui/rows_on_a_page.qml"_qs), {});
        m_window.reset(qobject_cast<QQuickWindow *>(
            component.createWithInitialProperties({{u"rows"_qs, QVariant::fromValue(m_rows.get())}})));
        QVERIFY2(m_window != nullptr, qPrintable(component.errorString()));
        m_window->show();
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get(), patience));
        settle();
    }
    void cleanup() { m_window.reset(); }

    void onlyWhatIsToBeSeenExists()
    {
        QCOMPARE(stack().height(), 1'000 * rowHeight);
        for (const qreal place : {0.0, 1'234.0, 20'000.0, 39'700.0, 500.0}) {
            turnTo(place);
            verify();
            QVERIFY(visible().size() < 30);
            QVERIFY(stack().childItems().size() < 60);
        }
    }

    void rowsFollowTheModel()
    {
        const auto numbers = [](int first, int last) {
            QList<int> result(last - first);
            std::iota(result.begin(), result.end(), first);
            return result;
        };
        for (const QList<int> &next :
             {numbers(495, 1'000), // rows above go, then rows in sight, then rows come in sight
              numbers(0, 498) + numbers(502, 1'000),
              numbers(0, 500) + numbers(2'000, 2'003) + numbers(500, 1'000),
              QList<int>{900} + numbers(0, 900) + numbers(901, 1'000),
              QList<int>{503} + numbers(0, 503) + numbers(504, 1'000), numbers(0, 3), QList<int>()}) {
            show(rowsUpTo(1'000));
            turnTo(500 * rowHeight);
            QList<LeakText> rows;
            for (const int number : next)
                rows.append(row(number));
            show(rows);
            settle();
            QCOMPARE(stack().height(), rowHeight * static_cast<qreal>(next.size()));
            verify();
        }
    }

    void aRowThatGrowsMovesTheOthers()
    {
        QList<LeakText> rows = rowsUpTo(1'000);
        rows[2].detail = u"more"_qs;
        show(rows);
        settle();
        QCOMPARE(stack().height(), 1'000 * rowHeight + 50);
        verify();
        turnTo(20'000);
        verify();
        // What grows above brings others in sight.
        m_window->findChild<QQuickItem *>(u"above"_qs)->setHeight(5'000);
        settle();
        verify();
    }

    // Else a turn of the wheel would take the keyboard from the person.
    void theKeyboardStaysWithItsRow()
    {
        QQuickItem *focused = visible().at(3);
        focused->forceActiveFocus();
        turnTo(20'000);
        QVERIFY(focused->hasActiveFocus());
        QCOMPARE(numberOf(focused), 3);
        QTest::keyClick(m_window.get(), Qt::Key_Backtab);
        settle();
        QVERIFY(!focused->hasActiveFocus());
    }

    void theKeyboardGoesThroughThemInOrder()
    {
        turnTo(20'000);
        turnTo(19'500);
        QList<QQuickItem *> rows = visible();
        rows.first()->forceActiveFocus();
        for (int step = 1; step < rows.size(); ++step) {
            QTest::keyClick(m_window.get(), Qt::Key_Tab);
            QVERIFY(rows.at(step)->hasActiveFocus());
        }
    }

private:
    QQuickItem &page() const { return *m_window->findChild<QQuickItem *>(u"page"_qs); }
    QQuickItem &stack() const { return *m_window->findChild<QQuickItem *>(u"stack"_qs); }
    static int numberOf(const QQuickItem *item) { return item->property("entry").value<LeakText>().pid; }

    void show(const QList<LeakText> &rows)
    {
        m_rows->show(rows, [](const LeakText &text) { return QString::number(text.pid); });
    }
    void settle()
    {
        for (int frame = 0; frame < 24; ++frame) {
            m_window->grabWindow();
            QCoreApplication::processEvents();
        }
    }
    void turnTo(qreal place)
    {
        page().setProperty("contentY", place);
        settle();
    }
    /// In the order in which the keyboard goes through them.
    QList<QQuickItem *> visible() const
    {
        QList<QQuickItem *> items;
        for (QQuickItem *item : stack().childItems())
            if (item->isVisible())
                items.append(item);
        return items;
    }
    /// Fails the test when something is not as if all rows were there.
    void verify() const
    {
        const qreal top = stack().mapFromItem(&page(), QPointF()).y();
        const QList<QQuickItem *> items = visible();
        qreal edge = 0;
        for (int number = 0; number < m_rows->count(); ++number) {
            const LeakText text = m_rows->data(m_rows->index(number), Qt::UserRole).value<LeakText>();
            const qreal height = text.detail.isEmpty() ? rowHeight : 90;
            const auto found = std::count_if(items.begin(), items.end(), [&](const QQuickItem *item) {
                return numberOf(item) == text.pid && item->y() == edge && item->height() == height &&
                       item->width() == stack().width();
            });
            if (edge + height > top && edge < top + pageHeight)
                QVERIFY2(found == 1, qPrintable(u"row %1 is there %2 times"_qs.arg(number).arg(found)));
            edge += height;
        }
    }

    std::unique_ptr<RowModel> m_rows;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

QTEST_MAIN(RowStackTest)
#include "RowStackTest.moc"
