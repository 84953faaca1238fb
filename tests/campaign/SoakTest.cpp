// A day of refreshes and every window opened and closed over and over: what Swabby holds does not grow. In
// short by default; SWABBY_SOAK=whole for all of it.
#include "ui/Desk.h"

#include <QtCore/QDir>
#include <QtCore/QRandomGenerator>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickWindow>

#include <malloc.h>

using namespace swabby;

namespace {

/// What this program holds of the system.
struct Held {
    qint64 memory = 0; ///< its own, in kB
    qsizetype threads = 0;
    qsizetype descriptors = 0;
    QStringList children; ///< name and state of each

    /// The most of either.
    Held operator|(const Held &other) const
    {
        return {std::max(memory, other.memory), std::max(threads, other.threads),
                std::max(descriptors, other.descriptors),
                children.size() < other.children.size() ? other.children : children};
    }
};

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Held held()
{
    ::malloc_trim(0); // what is free but not given back is nobody's
    Held now;
    const QByteArray status = content(u"/proc/self/status"_qs);
    now.memory = status.mid(status.indexOf("RssAnon:") + 8).trimmed().split(' ').first().toLongLong();
    const QStringList threads = QDir(u"/proc/self/task"_qs).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    now.threads = threads.size();
    now.descriptors =
        QDir(u"/proc/self/fd"_qs).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
    for (const QString &thread : threads) {
        const QByteArray children = content(u"/proc/self/task/%1/children"_qs.arg(thread));
        for (const QString &child : QString::fromUtf8(children).split(u' ', Qt::SkipEmptyParts))
            now.children += QString::fromUtf8(content(u"/proc/%1/stat"_qs.arg(child))).section(u' ', 1, 2);
    }
    return now;
}

void verifyFlat(const Held &first, const Held &last)
{
    constexpr qint64 mayGrow = 5 * 1024;
    qInfo("memory %lld -> %lld kB, threads %lld -> %lld, descriptors %lld -> %lld, children %lld -> %lld",
          first.memory, last.memory, qlonglong(first.threads), qlonglong(last.threads),
          qlonglong(first.descriptors), qlonglong(last.descriptors), qlonglong(first.children.size()),
          qlonglong(last.children.size()));
#ifndef __SANITIZE_ADDRESS__ // which keeps what was freed
    QVERIFY(last.memory <= first.memory + mayGrow);
#endif
    QVERIFY(last.threads <= first.threads);
    QVERIFY(last.descriptors <= first.descriptors);
    QVERIFY2(last.children.size() <= first.children.size(), qPrintable(last.children.join(u' ')));
    QVERIFY2(last.children.filter(QRegularExpression(u" Z$"_qs)).isEmpty(),
             qPrintable(last.children.join(u' ')));
}

} // namespace

class SoakTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aDayOfRefreshes()
    {
        const int refreshes = isWhole() ? 1'440 : 120;
        constexpr int warm = 60; // the history's first hour, and every tool once
        Desk desk({}, Record::everything);
        AppState &state = desk.state;
        Held first;
        Held last;
        for (int number = 0; number < refreshes; ++number) {
            // Somebody comes and goes every minute.
            desk.folder.setProcesses({"10 1 95 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill",
                                      QByteArray::number(100 + number) +
                                          " 1 40 1.0 1000 /usr/local/bin/visitor" +
                                          QByteArray::number(number)});
            const int before = state.refreshesApplied();
            state.refresh();
            QVERIFY(waitUntil([&] { return state.refreshesApplied() > before; }));
            if (number < warm)
                first = first | held();
            else if (number >= refreshes - warm)
                last = last | held();
        }
        QVERIFY(state.history().size() > refreshes / 2);
        verifyFlat(first, last);
    }

    void everyWindowOverAndOver()
    {
        const int rounds = isWhole() ? 200 : 10;
        const int warm = 5;
        Desk desk;
        desk.refresh();
        WindowLibrary windows(desk.context());
        Held first;
        Held last;
        for (int round = 0; round < rounds; ++round) {
            windows.openMainWindow();
            for (int section = 0; section < 7; ++section) {
                QTest::keyClick(visibleWindow(), static_cast<Qt::Key>(Qt::Key_1 + section),
                                Qt::ControlModifier);
                QVERIFY(!visibleWindow()->grabWindow().isNull());
            }
            closeAll();
            for (const auto &open : {std::function([&] { windows.openAskWindow(); }),
                                     std::function([&] { windows.openSettingsWindow(); }), std::function([&] {
                                         windows.togglePopover({0, 0, 24, 24});
                                     }),
                                     std::function([&] {
                                         windows.toggleItemMenu({0, 0, 24, 24});
                                     })}) {
                open();
                QVERIFY(!visibleWindow()->grabWindow().isNull());
                closeAll();
            }
            if (round < warm)
                first = first | held();
            else if (round >= rounds - warm)
                last = last | held();
        }
        verifyFlat(first, last);
    }

    // Whatever is pressed, however quickly, and whatever is half made meanwhile.
    void blindHands()
    {
        const auto seed = qEnvironmentVariableIntValue("SWABBY_SEED");
        QRandomGenerator random(seed > 0 ? quint32(seed) : 1);
        Desk desk;
        for (int number = 0; number < 40; ++number)
            desk.folder.writeFile(u"home/Downloads/copy %1.bin"_qs.arg(number), QByteArray(9'000, 'x'));
        desk.refresh();
        WindowLibrary windows(desk.context());
        constexpr Qt::Key keys[] = {Qt::Key_Tab,    Qt::Key_Tab,  Qt::Key_Space,    Qt::Key_Return,
                                    Qt::Key_Escape, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Up,
                                    Qt::Key_F5,     Qt::Key_End};
        for (int number = 0; number < (isWhole() ? 5'000 : 300); ++number) {
            windows.openMainWindow();
            QQuickWindow &window = *visibleWindow();
            switch (random.bounded(4)) {
            case 0:
                QTest::keyClick(&window, static_cast<Qt::Key>(Qt::Key_1 + random.bounded(8)),
                                Qt::ControlModifier);
                break;
            case 1:
                QTest::keyClick(&window, keys[random.bounded(int(std::size(keys)))]);
                break;
            case 2:
                QTest::mouseClick(&window, Qt::LeftButton, {},
                                  {random.bounded(window.width()), random.bounded(window.height())});
                break;
            default:
                QTest::qWait(random.bounded(20));
            }
            if (random.bounded(50) == 0)
                desk.state.refresh();
        }
    }

private:
    static bool isWhole() { return qEnvironmentVariable("SWABBY_SOAK") == u"whole"; }

    static QQuickWindow *visibleWindow()
    {
        QQuickWindow *found = nullptr;
        const auto look = [&] {
            for (QWindow *window : QGuiApplication::topLevelWindows())
                if (window->isVisible())
                    found = qobject_cast<QQuickWindow *>(window);
            return found != nullptr;
        };
        return waitUntil(look) ? found : nullptr;
    }

    static void closeAll()
    {
        for (QWindow *window : QGuiApplication::topLevelWindows())
            window->close();
        QVERIFY(waitUntil([] {
            const QWindowList all = QGuiApplication::topLevelWindows();
            return std::none_of(all.begin(), all.end(),
                                [](const QWindow *window) { return window->isVisible(); });
        }));
    }
};

QTEST_MAIN(SoakTest)
#include "SoakTest.moc"
