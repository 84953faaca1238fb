#include "Desk.h"

#include "settings/Settings.h"
#include "support/Table.h"
#include "ui/presentation/SymbolTable.h"

#include <QtCore/QJsonDocument>
#include <QtGui/QAccessible>

namespace swabby {
namespace {

QJsonObject troubledMachine(const QJsonObject &facts)
{
    QJsonObject machine = QJsonDocument::fromJson(fixture(u"ui/troubled_machine.json"_qs)).object();
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

} // namespace

Desk::Desk(const QJsonObject &facts, Record record)
    : folder(troubledMachine(facts)), state(opened(folder), record), flows(state)
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
    if (!QTest::qWaitForWindowActive(&window, patience) || window.grabWindow().isNull())
        qFatal("a window does not show");
    verifyLook(window);
}

QList<QQuickItem *> visibleItems(QQuickItem *root)
{
    if (!root->isVisible() || root->opacity() == 0)
        return {};
    QList<QQuickItem *> items = {root};
    for (QQuickItem *child : root->childItems())
        items.append(visibleItems(child));
    return items;
}

QQuickItem *itemNamed(const QQuickWindow &window, const QString &name)
{
    const QString start = name.chopped(name.endsWith(u'…') ? 1 : 0);
    for (QQuickItem *item : visibleItems(window.contentItem()))
        if (nameOf(*item) == name || (start != name && nameOf(*item).startsWith(start)))
            return item;
    return nullptr;
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
    QStringList texts;
    for (const QQuickItem *item : visibleItems(window.contentItem()))
        if (item->inherits("QQuickText"))
            texts.append(item->property("text").toString());
    return texts.join(u'\n');
}

void verifyLook(const QQuickWindow &window)
{
    for (QQuickItem *item : visibleItems(window.contentItem())) {
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
