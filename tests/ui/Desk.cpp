#include "Desk.h"

#include "settings/Settings.h"
#include "ui/presentation/SymbolTable.h"

#include <QtGui/QAccessible>

namespace swabby {
namespace {

QJsonObject troubledMachine(const QJsonObject &facts)
{
    QJsonObject machine = {
        {u"now"_qs, 1'790'000'000},
        {u"cpuTicks"_qs, QJsonArray{QJsonArray{0, 0, 0, 0}, QJsonArray{90, 0, 10, 0}}},
        {u"memory"_qs,
         QJsonObject{{u"pageSize"_qs, 4096}, {u"activePages"_qs, 950}, {u"physicalBytes"_qs, 4'096'000}}},
        {u"disk"_qs, QJsonObject{{u"freeBytes"_qs, 600}, {u"totalBytes"_qs, 1000}}}};
    for (const QString &key : facts.keys())
        machine.insert(key, facts.value(key));
    return machine;
}

std::shared_ptr<Machine> opened(const TemporaryMachine &folder)
{
    folder.setProcesses({"10 1 95 1.0 1000 /Applications/Mill.app/Contents/MacOS/Mill"});
    const std::shared_ptr<Machine> machine = folder.open();
    Settings(*machine->settings).store(setting<"hasCompletedOnboarding">, true);
    return machine;
}

QString nameOf(const QQuickItem &item)
{
    return item.property("name").toString();
}

template <typename Fits>
void collect(QQuickItem *from, const Fits &fits, QList<QQuickItem *> &found)
{
    if (!from->isVisible())
        return;
    if (fits(*from))
        found.append(from);
    for (QQuickItem *child : from->childItems())
        collect(child, fits, found);
}

} // namespace

Desk::Desk(const QJsonObject &facts)
    : folder(troubledMachine(facts)), state(opened(folder), Record::nothing), flows(state)
{
    QTest::failOnWarning(QRegularExpression(u".*(Error|qrc:).*"_qs));
}

void Desk::refresh()
{
    const int wanted = std::max(state.refreshesApplied() + 1, refreshesUntilFigures(state.machine()));
    while (state.refreshesApplied() < wanted) {
        const int before = state.refreshesApplied();
        state.refresh();
        QVERIFY(waitUntil([&] { return state.refreshesApplied() > before; }));
    }
}

UserInterfaceContext Desk::context(ThemeChoice theme)
{
    return flows.windowContext(state, theme);
}

void show(QQuickWindow &window)
{
    window.show();
    window.requestActivate();
    // A picture lays everything out.
    if (!QTest::qWaitForWindowActive(&window) || window.grabWindow().isNull())
        qFatal("a window does not show");
    verifyLook(window);
}

QQuickItem *itemNamed(const QQuickWindow &window, const QString &name)
{
    QList<QQuickItem *> found;
    const bool isStart = name.endsWith(u'…');
    const auto fits = [&](const QQuickItem &item) {
        return isStart ? nameOf(item).startsWith(name.chopped(1)) : nameOf(item) == name;
    };
    collect(window.contentItem(), fits, found);
    return found.value(0);
}

void press(QQuickWindow &window, const QString &name, Qt::Key key)
{
    QQuickItem *item = nullptr;
    QVERIFY2(waitUntil([&] { return (item = itemNamed(window, name)) != nullptr; }), qPrintable(name));
    item->forceActiveFocus();
    QTest::keyClick(&window, key);
}

QString textOf(const QQuickWindow &window)
{
    QList<QQuickItem *> found;
    collect(
        window.contentItem(), [](const QQuickItem &item) { return item.inherits("QQuickText"); }, found);
    QStringList texts;
    for (const QQuickItem *item : found)
        texts.append(item->property("text").toString());
    return texts.join(u'\n');
}

void verifyLook(const QQuickWindow &window)
{
    QList<QQuickItem *> all;
    collect(
        window.contentItem(), [](const QQuickItem &) { return true; }, all);
    for (QQuickItem *item : all) {
        const QByteArray what = item->metaObject()->className() + nameOf(*item).toUtf8();
        if (item->inherits("QQuickText"))
            QVERIFY2(item->property("textFormat").toInt() == Qt::PlainText, what);
        if (item->inherits("swabby::SymbolItem") && !nameOf(*item).isEmpty())
            QVERIFY2(findSymbol(nameOf(*item)) != nullptr, what);
        if (!item->activeFocusOnTab())
            continue;
        // A secret's field is kept from screen readers; its frame stands for it.
        constexpr int password = 2;
        const bool isSecret = item->property("echoMode").toInt() == password;
        QAccessibleInterface *spoken =
            QAccessible::queryAccessibleInterface(isSecret ? item->parentItem() : item);
        QVERIFY2(spoken != nullptr && !spoken->text(QAccessible::Name).isEmpty(), what);
        QVERIFY2(item->width() >= 24 && item->height() >= 24, what);
    }
}

} // namespace swabby
