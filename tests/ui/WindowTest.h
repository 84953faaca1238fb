#pragma once

#include "Desk.h"
#include "ui/qmltypes/MainWindowView.h"

namespace swabby {

/// A test of what a person does with the main window on a Desk.
class WindowTest : public QObject {
protected:
    void begin(const QJsonObject &facts = {})
    {
        m_open.reset();
        m_desk = std::make_unique<Desk>(facts);
    }
    void end()
    {
        m_open.reset();
        m_desk.reset();
    }
    virtual UserInterfaceContext context() { return m_desk->context(); }
    void open() { m_open = shown(openMainWindow(context())); }
    void openAt(MainSection section)
    {
        m_desk->refresh();
        open();
        view().select(section);
    }

    MainWindowView &view() { return *m_open->view; }
    QQuickWindow &window() { return *m_open->window; }
    ConfirmationView &confirmation() { return *view().coordinator()->confirmation(); }
    QQuickItem *item(const QString &name) { return itemNamed(window(), name); }
    bool comes(const QString &name)
    {
        return waitUntil([&] { return item(name) != nullptr; });
    }
    bool goes(const QString &name)
    {
        return waitUntil([&] { return item(name) == nullptr; });
    }
    /// A text, or what a pattern finds: a row or a question has its words a frame after it is there.
    template <typename Words>
    bool says(const Words &words)
    {
        return waitUntil([&] { return textOf(window()).contains(words); });
    }
    void pressHere(const QString &name) { press(window(), name); }
    /// The keyboard goes elsewhere, and the page's rows need not keep their places for it.
    void leavePage() { item(u"Settings"_qs)->forceActiveFocus(); }
    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&window(), key, modifiers);
    }

    std::unique_ptr<Desk> m_desk;
    std::unique_ptr<OpenWindow<MainWindowView>> m_open;
};

} // namespace swabby
