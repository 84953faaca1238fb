// How long the main thread is busy for each frame of the main window, drawn in software, while a list of
// 1,000 groups of duplicates is scrolled from end to end and back, while the sections are gone through, and
// when the question before all of them go is asked; beside an empty window that is moved the same way. On the
// display of the environment; without one `QT_QPA_PLATFORM=offscreen`.
#include "app/ApplicationFlows.h"
#include "benchmarks/FrameMeter.h"
#include "settings/Settings.h"
#include "state/AppState.h"
#include "tests/support/TemporaryMachine.h"
#include "ui/WindowLibrary.h"
#include "ui/qmltypes/MainWindowView.h"

#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtGui/QWheelEvent>
#include <QtQml/QQmlComponent>
#include <QtQuick/QQuickItem>

#include <memory>

namespace {

using namespace swabby;
using namespace std::chrono_literals;

constexpr int groups = 1'000;
constexpr int programs = 400;
constexpr int rounds = 10;
constexpr auto betweenEvents = 16ms;
constexpr int pixelsAnEvent = 120;

void fill(const TemporaryMachine &folder)
{
    for (int group = 0; group < groups; ++group)
        for (const char *place :
             {"home/Downloads/%1 of the pictures.jpg", "home/Desktop/%1 of the pictures copy.jpg"})
            folder.writeFile(QString::fromLatin1(place).arg(group),
                             QByteArray::number(group).repeated(2'000).left(5'000 + group));
    QList<QByteArray> rows;
    for (int program = 0; program < programs; ++program) {
        const QByteArray number = QByteArray::number(program);
        rows.append(number + " 1 1.0 0.2 20000 /Applications/Mill " + number + ".app/Contents/MacOS/Mill " +
                    number);
    }
    folder.setProcesses(rows);
    for (int item = 0; item < 100; ++item)
        folder.writeFile(QStringLiteral("home/Library/LaunchAgents/org.mill.%1.plist").arg(item),
                         "<plist version=\"1.0\"><dict><key>Label</key><string>org.mill." +
                             QByteArray::number(item) +
                             "</string><key>Program</key><string>/nowhere/mill</string></dict></plist>");
}

void wait(std::chrono::milliseconds duration)
{
    bool isOver = false;
    QTimer::singleShot(duration, Qt::PreciseTimer, qGuiApp, [&] { isOver = true; });
    while (!isOver)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void waitFor(const std::function<bool()> &isSo)
{
    while (!isSo())
        wait(betweenEvents);
}

/// The first thing that scrolls, seen from there.
QQuickItem *scrolling(QQuickItem *from)
{
    if (from->isVisible() && from->inherits("QQuickFlickable") &&
        from->property("contentHeight").toReal() > from->height())
        return from;
    for (QQuickItem *child : from->childItems())
        if (QQuickItem *found = scrolling(child))
            return found;
    return nullptr;
}

void turnWheel(QQuickWindow &window, int pixels, Qt::ScrollPhase phase = Qt::ScrollUpdate)
{
    const QPointF middle(window.width() * 0.6, window.height() * 0.5);
    QWheelEvent event(middle, window.mapToGlobal(middle), QPoint(0, pixels), QPoint(0, pixels), Qt::NoButton,
                      Qt::NoModifier, phase, false);
    event.setTimestamp(static_cast<quint64>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                                std::chrono::steady_clock::now().time_since_epoch())
                                                .count()));
    QCoreApplication::sendEvent(&window, &event);
}

/// With the pointer over the list, from its beginning to its end and back.
void scrollThrough(QQuickWindow &window)
{
    QQuickItem *page = scrolling(window.contentItem());
    if (page == nullptr)
        qFatal("nothing scrolls");
    const auto place = [&] { return page->property("contentY").toReal(); };
    const auto end = [&] { return page->property("contentHeight").toReal() - page->height(); };
    for (const int direction : {-1, 1}) {
        turnWheel(window, 0, Qt::ScrollBegin);
        while (direction < 0 ? place() < end() - 1 : place() > 1) {
            turnWheel(window, direction * pixelsAnEvent);
            wait(betweenEvents);
        }
        turnWheel(window, 0, Qt::ScrollEnd);
    }
}

/// An empty window with something as long behind it, of which one line is to be seen.
std::unique_ptr<QQuickWindow> emptyWindow(QQmlEngine &engine, const QSize &size, qreal length)
{
    QQmlComponent component(&engine);
    component.setData(
        "import QtQuick; Window { color: \"white\"; Flickable { anchors.fill: parent; "
        "boundsBehavior: Flickable.StopAtBounds; contentWidth: width; objectName: \"page\"; Rectangle { "
        "width: 10; height: 1; y: parent.parent.contentY + 9 - parent.parent.contentY / 9000 } } }",
        {});
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(component.create()));
    if (window == nullptr)
        qFatal("%s", qPrintable(component.errorString()));
    window->resize(size);
    window->findChild<QQuickItem *>(QStringLiteral("page"))->setProperty("contentHeight", length);
    window->show();
    wait(500ms);
    return window;
}

/// Goes to each section and gives it time to come to rest; the longest frame of each.
std::vector<double> visitAll(MainWindowView &view, FrameMeter &meter, std::vector<double> &all)
{
    std::vector<double> longest;
    for (int section = 0; section < view.sections().size(); ++section) {
        meter.begin();
        view.selectIndex(section);
        wait(300ms);
        if (meter.frames.empty())
            continue; // it was there already
        longest.push_back(*std::max_element(meter.frames.begin(), meter.frames.end()));
        all.insert(all.end(), meter.frames.begin(), meter.frames.end());
    }
    return longest;
}

void measureQuestion(MainWindowView &view, FrameMeter &meter)
{
    StorageView &storage = *view.storage();
    const RowModel &rows = *storage.duplicates()->rows();
    std::vector<double> ticks;
    for (int row = 0; row < rows.count(); ++row) {
        const QString id = rows.data(rows.index(row), Qt::UserRole).value<RemovableRowText>().id;
        meter.begin();
        storage.setSelected(id, true);
        if (row % (groups / 50) == 0) {
            wait(50ms);
            ticks.insert(ticks.end(), meter.frames.begin(), meter.frames.end());
        }
    }
    printFrames("a box is ticked", ticks);
    std::vector<double> first;
    std::vector<double> all;
    for (int round = 0; round < rounds; ++round) {
        wait(300ms);
        meter.begin();
        storage.cleanUp();
        wait(400ms);
        first.push_back(meter.frames.front());
        all.insert(all.end(), meter.frames.begin(), meter.frames.end());
        if (round + 1 < rounds)
            view.coordinator()->confirmation()->cancel();
    }
    printFrames("the question before they all go opens", first);
    printFrames("while it fades in", all);
}

} // namespace

int main(int argumentCount, char **arguments)
{
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    const TemporaryMachine folder({{QStringLiteral("now"), 1'790'000'000}});
    fill(folder);
    QGuiApplication application(argumentCount, arguments);
    application.setQuitOnLastWindowClosed(false);
    AppState state(folder.open(), Record::nothing);
    Settings(*state.machine().settings).store(setting<"hasCompletedOnboarding">, true);
    ApplicationFlows flows(state);
    state.refresh();
    waitFor([&] { return state.refreshesApplied() > 0; });
    const UserInterfaceContext context = flows.windowContext(state, ThemeChoice::light);
    std::printf("%s, %d groups of duplicates, %d programs\n", qPrintable(QGuiApplication::platformName()),
                groups, programs);

    const auto open = openMainWindow(context);
    MainWindowView &view = *open->view;
    QQuickWindow &window = *open->window;
    FrameMeter meter(window);
    window.show();
    wait(1s);
    std::vector<double> all;
    printFrames("each section for the first time", visitAll(view, meter, all));

    view.select(MainSection::storage);
    StorageView &storage = *view.storage();
    storage.scan(storage.duplicates());
    waitFor([&] { return !storage.isScanning(); });
    wait(1s);

    QQuickItem *page = scrolling(window.contentItem());
    const qreal length = page == nullptr ? 0 : page->property("contentHeight").toReal();
    meter.begin();
    scrollThrough(window);
    printFrames("the list is scrolled", meter.frames);
    {
        const auto empty = emptyWindow(open->engine->engine, window.size(), length);
        FrameMeter control(*empty);
        scrollThrough(*empty);
        printFrames("an empty window is moved the same way", control.frames);
    }
    all.clear();
    std::vector<double> longest;
    for (int round = 0; round < rounds; ++round) {
        const std::vector<double> ofRound = visitAll(view, meter, all);
        longest.insert(longest.end(), ofRound.begin(), ofRound.end());
    }
    printFrames("sections are gone through", all);
    printFrames("the frame that shows a section", longest);

    view.select(MainSection::storage);
    wait(300ms);
    measureQuestion(view, meter);
    return 0;
}
