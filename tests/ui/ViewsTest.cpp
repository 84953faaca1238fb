#include "Desk.h"
#include "ui/qmltypes/MainWindowView.h"

using namespace swabby;

namespace {

const QString hostile =
    u"<img src='http://example.invalid/a.png'><b>A program whose name never ends</b> & Sons "_qs;

ShownState everythingAtOnce()
{
    ShownState shown;
    shown.isKnown = shown.speedIsKnown = true;
    shown.stats.cpuUsagePercent = 100;
    shown.stats.memUsedBytes = 1'023'900'000'000;
    shown.stats.memTotalBytes = 1'099'511'627'776;
    shown.stats.diskFreeBytes = 999'990'000'000;
    shown.stats.diskTotalBytes = 8'000'000'000'000;
    shown.stats.batteryPercent = 100;
    shown.stats.isCharging = true;
    shown.stats.timeRemainingMinutes = 1'439;
    shown.stats.batteryHealthPercent = 101;
    shown.stats.batteryCycleCount = 123'456;
    shown.stats.timestamp = shown.time = 1'790'000'000;
    shown.history = {{1'789'999'940, 50, 50}, {1'790'000'000, 60, 50}};
    shown.health = HealthLevel::red;
    for (int pid = 1; pid <= 8; ++pid)
        shown.processes.append({pid,
                                hostile + QString::number(pid),
                                {},
                                1'600.0 / pid,
                                60,
                                1ULL << 40,
                                false,
                                90.0 / pid,
                                123'456'789'012 / pid});
    shown.batteryDrainers = shown.networkUsers = shown.processes;
    shown.browserRollups = {{hostile, 1'234, 1ULL << 40, 1'600}};
    shown.leakSuspects = {{1, hostile, 123'456.7, 30}};
    shown.loginItems = {{hostile, {}, {}, LoginItemScope::globalDaemon, true, true, false, false, 86'400},
                        {hostile, {}, {}, LoginItemScope::userAgent, true, false, true, false, {}}};
    for (const MainSection section : {MainSection::speed, MainSection::storage})
        shown.healthIssues.append({HealthLevel::red, section, hostile, hostile.repeated(3), hostile,
                                   OpenSection{MainSection::speed}});
    return shown;
}

void verifyText(const QQuickItem *item, const QQuickWindow &window)
{
    const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    const QByteArray text = item->property("text").toString().toUtf8();
    QVERIFY2(place.left() >= 0 && place.right() <= window.width(), text);
    // What does not fit ends in an ellipsis or in a new line, never at an edge.
    QVERIFY2(item->property("contentWidth").toDouble() <= item->width() + 1, text);
    QVERIFY2(item->width() >= 24 || !item->property("truncated").toBool(), text);
}

} // namespace

class ViewsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyViewHolds()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_qs));
        for (const QSize size : {QSize(820, 560), QSize(940, 660), QSize(1880, 1120)})
            for (const bool isFull : {true, false}) {
                verifyView(MainSection::overview, size, isFull, true);
                for (const SectionRow &section : sectionRows(Machine()))
                    verifyView(*sectionFrom(section.name), size, isFull, false);
            }
    }

private:
    void verifyView(MainSection section, const QSize &size, bool isFull, bool hasSheet)
    {
        const auto open = openMainWindow(m_desk.context(isFull ? ThemeChoice::dark : ThemeChoice::light));
        QVERIFY(open != nullptr);
        m_desk.state.disconnect(open->view.get()); // what is shown is not its own
        open->engine->theme->setStill(true);
        ShownState nothingAtAll;
        nothingAtAll.isKnown = true;
        open->view->state()->show(isFull ? everythingAtOnce() : nothingAtAll, isFull);
        open->view->select(section);
        open->view->setProperty("showHealthDetail", hasSheet);
        open->window->resize(size);
        open->window->show();
        QVERIFY(QTest::qWaitForWindowExposed(open->window.get(), patience));
        verifyLook(*open->window);
        int texts = 0;
        for (const QQuickItem *item : visibleItems(open->window->contentItem()))
            if (item->inherits("QQuickText") && !item->property("text").toString().isEmpty()) {
                verifyText(item, *open->window);
                ++texts;
            }
        QVERIFY(texts > 6);
        const QColor corner = open->window->grabWindow().pixelColor(size.width() - 5, 45);
        if (!hasSheet)
            QCOMPARE(corner, (isFull ? darkColors() : lightColors()).window);
    }

    Desk m_desk;
};

QTEST_MAIN(ViewsTest)
#include "ViewsTest.moc"
