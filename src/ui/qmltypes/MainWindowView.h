#pragma once

#include "flows/health/ProgramSearch.h"
#include "state/AppState.h"
#include "ui/presentation/MenuText.h"
#include "ui/presentation/Sections.h"
#include "ui/presentation/WelcomeText.h"
#include "ui/qmltypes/CheckView.h"
#include "ui/qmltypes/DeveloperView.h"
#include "ui/qmltypes/MainWindowCoordinator.h"
#include "ui/qmltypes/RemovalBannerView.h"
#include "ui/qmltypes/StartupView.h"
#include "ui/qmltypes/StateView.h"
#include "ui/qmltypes/StorageView.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtQml/qqmlregistration.h>

namespace swabby {

/// What one main window shows and what its controls ask for. Begins anew with every window.
class MainWindowView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(swabby::StateView *state READ state CONSTANT)
    Q_PROPERTY(swabby::MainWindowCoordinator *coordinator READ coordinator CONSTANT)
    Q_PROPERTY(swabby::RemovalBannerView *removal READ removal CONSTANT)
    Q_PROPERTY(bool canRemoveHere READ canRemoveHere NOTIFY selectionChanged)
    Q_PROPERTY(swabby::CheckView *check READ check CONSTANT)
    Q_PROPERTY(swabby::StorageView *storage READ storage CONSTANT)
    Q_PROPERTY(swabby::StartupView *startup READ startup CONSTANT)
    Q_PROPERTY(swabby::DeveloperView *developer READ developer CONSTANT)
    Q_PROPERTY(QList<swabby::SectionRow> sections READ sections CONSTANT)
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY selectionChanged)
    Q_PROPERTY(swabby::SectionRow selected READ selected NOTIFY selectionChanged)
    Q_PROPERTY(bool showHealthDetail MEMBER m_showHealthDetail NOTIFY sheetChanged)
    Q_PROPERTY(bool showLastWindowNotice MEMBER m_showLastWindowNotice NOTIFY sheetChanged)
    Q_PROPERTY(bool showWelcome MEMBER m_showWelcome NOTIFY sheetChanged)
    Q_PROPERTY(QList<swabby::WelcomePoint> welcomePoints MEMBER m_welcomePoints NOTIFY welcomePointsChanged)
    Q_PROPERTY(QList<swabby::MenuEntry> processMenu READ processMenu CONSTANT)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY refreshingChanged)
    Q_PROPERTY(int speedView MEMBER m_speedView NOTIFY speedViewChanged)
    Q_PROPERTY(QString standing READ standing NOTIFY standingChanged)
    Q_PROPERTY(bool canStartAnew READ canStartAnew NOTIFY standingChanged)
    Q_PROPERTY(bool isRefreshing READ isRefreshing NOTIFY refreshingChanged)
    Q_PROPERTY(bool isHeld READ isHeld WRITE setHeld NOTIFY heldChanged)

public:
    explicit MainWindowView(const UserInterfaceContext &context);

    StateView *state() { return &m_stateView; }
    MainWindowCoordinator *coordinator() { return &m_coordinator; }
    RemovalBannerView *removal() { return &m_removal; }
    /// Whether the section shown is one of those that remove things.
    bool canRemoveHere() const
    {
        return m_selection == MainSection::swabbyCheck || m_selection == MainSection::storage ||
               m_selection == MainSection::developer;
    }
    CheckView *check() { return &m_check; }
    StorageView *storage() { return &m_storage; }
    StartupView *startup() { return &m_startup; }
    DeveloperView *developer() { return &m_developer; }
    QList<MenuEntry> processMenu() const { return swabby::processMenu(); }
    /// Whether a full check runs, here or anywhere.
    bool isScanning() const { return m_isScanning; }
    const QList<SectionRow> &sections() const { return m_sections; }
    /// In the sidebar; -1 for a section that is shown, but not offered.
    int selectedIndex() const;
    SectionRow selected() const { return sectionRow(m_selection, m_context.state.machine().words); }
    MainSection selection() const { return m_selection; }
    /// That Swabby itself was updated or removed; empty while what runs is what is installed.
    const QString &standing() const { return m_standing.text; }
    bool canStartAnew() const { return m_standing.canStartAnew; }
    bool isRefreshing() const { return m_isRefreshing; }
    /// Whether somebody is at something on the page: then no row of it leaves its place, nor for the time of
    /// a double click afterwards.
    bool isHeld() const { return m_isHeld; }
    void setHeld(bool isHeld);

    void select(MainSection section);
    Q_INVOKABLE void selectIndex(int index);
    /// The same, but for the full check, which begins anew when it is shown already.
    Q_INVOKABLE void followShortcut(int index);
    /// Closes the sheet and does what the issue at that place offers.
    Q_INVOKABLE void performIssue(int index);
    Q_INVOKABLE void togglePin(int pid);
    Q_INVOKABLE void explainProcess(int pid);
    Q_INVOKABLE void quitProcess(int pid);
    /// What the menu of that program's row says.
    Q_INVOKABLE void follow(int command, int pid);
    /// Shows the full check, which begins with that.
    Q_INVOKABLE void openCheck();
    Q_INVOKABLE void openAskWindow() { m_context.openAskWindow(); }
    Q_INVOKABLE void openSettingsWindow() { m_context.openSettingsWindow(); }
    Q_INVOKABLE void finishWelcome();
    Q_INVOKABLE void refresh();
    /// Whether the window may close now; when not, it says why.
    Q_INVOKABLE bool mayClose();
    Q_INVOKABLE void startAnew() { m_context.startAnew(); }
    Q_INVOKABLE void quit() { m_context.quit(); }

Q_SIGNALS:
    void selectionChanged();
    /// Of the page that is shown already: somebody wants to be shown what helps.
    void remedyWanted();
    void sheetChanged();
    void welcomePointsChanged();
    void speedViewChanged();
    void refreshingChanged();
    void standingChanged();
    void heldChanged();

private:
    /// Of every page, but not of what is asked over them.
    QList<RowModel *> rows() const;
    void holdRows();
    void followState();
    void followStanding();
    void showHistoryTrouble(const QString &why);
    void setRefreshing(bool isRefreshing);
    /// The program of that id, listed or found; none when it is neither any more.
    std::optional<ProcessSample> findProcess(int pid) const;

    UserInterfaceContext m_context;
    StateView m_stateView{this};
    MainWindowCoordinator m_coordinator;
    RemovalBannerView m_removal;
    CheckView m_check;
    StorageView m_storage;
    StartupView m_startup;
    DeveloperView m_developer;
    ProgramSearch m_search;
    QList<SectionRow> m_sections = sectionRows(m_context.state.machine());
    MainSection m_selection = MainSection::overview;
    int m_speedView = 0; // the busiest programs; 1 is by browser
    bool m_showHealthDetail = false;
    bool m_showLastWindowNotice = false;
    bool m_showWelcome = false;
    QList<WelcomePoint> m_welcomePoints;
    Standing m_standing;
    bool m_isScanning = false;
    bool m_isRefreshing = false;
    bool m_isHeld = false;
    QTimer m_release;
};

} // namespace swabby
