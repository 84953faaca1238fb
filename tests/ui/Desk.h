#pragma once

#include "app/ApplicationFlows.h"
#include "state/AppState.h"
#include "support/TemporaryMachine.h"
#include "ui/WindowLibrary.h"
#include "ui/qmltypes/Theme.h"

#include <QtQuick/QQuickItem>
#include <QtTest/QTest>

namespace swabby {

/// Somebody's machine in trouble, on which the program Mill (10) runs, with all that goes on over time, and
/// the windows on it. The welcome has been seen. A test fails when a window warns of something.
class Desk {
public:
    /// The facts are added to the machine's, or replace them.
    explicit Desk(const QJsonObject &facts = {}, Record record = Record::nothing);

    /// Refreshes until the figures are known, or once more.
    void refresh();
    /// What every window is opened with.
    UserInterfaceContext context(ThemeChoice theme = ThemeChoice::light);

    const TemporaryMachine folder;
    AppState state;
    ApplicationFlows flows;
};

/// Shows a window as somebody sees it who works in it. Everything in it is laid out then, and looks as it
/// should.
void show(QQuickWindow &window);

/// The same with a window that was just made, in which nothing moves.
template <typename View>
std::unique_ptr<OpenWindow<View>> shown(std::unique_ptr<OpenWindow<View>> open)
{
    open->engine->theme->setStill(true);
    show(*open->window);
    return open;
}

/// Everything in there that is to be seen, with the thing itself.
QList<QQuickItem *> visibleItems(QQuickItem *root);

/// The first visible thing of that name, or that begins so when the name ends with "…"; null for none.
QQuickItem *itemNamed(const QQuickWindow &window, const QString &name);

/// Waits for it, gives it the keyboard and presses it with that. Fails the test when it does not come.
void press(QQuickWindow &window, const QString &name, Qt::Key key = Qt::Key_Space);

/// All that can be read in the window, a text a line.
QString textOf(const QQuickWindow &window);

/// Fails the test when a text is not plain, a symbol has no drawing, or something that the keyboard reaches
/// has no name for screen readers or is too small to be hit.
void verifyLook(const QQuickWindow &window);

} // namespace swabby
