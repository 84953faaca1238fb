#pragma once

#include "flows/health/FullCheck.h"
#include "settings/Settings.h"
#include "ui/presentation/CheckText.h"
#include "ui/presentation/PlainWords.h"
#include "ui/qmltypes/AssistantTrouble.h"
#include "ui/qmltypes/RemovableList.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

class MainWindowCoordinator;

/// One full check, as its page shows it. It lives as long as the page is looked at.
class CheckView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY changed)
    Q_PROPERTY(QString noResult READ noResult NOTIFY changed)
    Q_PROPERTY(QList<swabby::CheckStep> steps READ steps NOTIFY changed)
    Q_PROPERTY(QString lookingAt READ lookingAt NOTIFY lookingAtChanged)
    Q_PROPERTY(QString namesNote READ namesNote NOTIFY changed)
    Q_PROPERTY(QString headline READ headline NOTIFY changed)
    Q_PROPERTY(QString summary READ summary NOTIFY changed)
    Q_PROPERTY(QString sentNote READ sentNote NOTIFY changed)
    Q_PROPERTY(swabby::AssistantTrouble trouble READ trouble NOTIFY changed)
    Q_PROPERTY(bool isAllClear READ isAllClear NOTIFY changed)
    Q_PROPERTY(swabby::RemovableList *candidates READ candidates CONSTANT)
    Q_PROPERTY(QString clearable READ clearable NOTIFY changed)
    Q_PROPERTY(QString removedSince READ removedSince NOTIFY changed)
    Q_PROPERTY(QString chosenText READ chosenText NOTIFY changed)
    Q_PROPERTY(QString removeLabel READ removeLabel NOTIFY changed)
    Q_PROPERTY(bool canRemove READ canRemove NOTIFY changed)
    Q_PROPERTY(swabby::RowModel *startupItems READ startupItems CONSTANT)
    Q_PROPERTY(QStringList busyItems READ busyItems NOTIFY changed)
    Q_PROPERTY(swabby::RowModel *watched READ watched CONSTANT)

public:
    CheckView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator, QObject *parent);
    ~CheckView() override;

    /// The page appears and the check begins. Gives what leave() is told.
    Q_INVOKABLE int enter();
    /// The page is gone; a check that runs ends, unless the page has appeared anew meanwhile.
    Q_INVOKABLE void leave(int visit);
    /// Begins a check; one that still runs begins anew.
    Q_INVOKABLE void run();
    Q_INVOKABLE void cancel();
    Q_INVOKABLE void setSelected(const QString &id, bool isSelected) { m_check.setSelected(id, isSelected); }
    Q_INVOKABLE void setAllSelected(bool isSelected) { m_check.setAllSelected(isSelected); }
    /// Asks before what is ticked goes.
    Q_INVOKABLE void remove();
    Q_INVOKABLE void disable(const QString &id);
    Q_INVOKABLE void ignore(const QString &id) { m_check.dismiss(id); }
    Q_INVOKABLE void explain();
    Q_INVOKABLE void openAssistantSettings() { m_context.openAssistantSettings(); }
    Q_INVOKABLE void quit();

    bool isScanning() const { return m_isBeginning || m_check.phase() == FullCheck::Phase::scanning; }
    /// Why the last check has no result; empty when it has.
    QString noResult() const { return noResultText(m_check.result(), m_isStopped); }
    QList<CheckStep> steps() const { return checkSteps(m_check.completedSteps()); }
    QString lookingAt() const { return isScanning() ? lookingAtText(m_check) : QString(); }
    QString namesNote() const
    {
        return namesSentText(Settings(*m_context.state.machine().settings).value(setting<"aiEnabled">));
    }
    QString headline() const { return oneLine(m_check.result().headline); }
    QString summary() const { return harmlessLines(summaryText(m_check.result())); }
    QString sentNote() const { return sentText(m_check.result()); }
    AssistantTrouble trouble() const { return AssistantTrouble(m_check.result().failure); }
    bool isAllClear() const { return m_check.result().findings() == 0; }
    RemovableList *candidates() { return &m_candidates; }
    /// Of the result as it stands now, and what that is.
    QString clearable() const { return clearableText(m_check.result().removalCandidates); }
    QString removedSince() const { return removedSinceText(m_check.removedSince()); }
    QString chosenText() const { return swabby::chosenText(m_check.selectedItems()); }
    QString removeLabel() const { return m_check.removeLabel(); }
    bool canRemove() const { return m_check.selectedCount() > 0; }
    RowModel *startupItems() { return &m_startupItems; }
    /// The startup items that are being turned off.
    QStringList busyItems() const { return m_context.startup.busyIds(); }
    /// The program to watch, while it runs.
    RowModel *watched() { return &m_watched; }

Q_SIGNALS:
    void changed();
    void lookingAtChanged();
    /// The result stands.
    void finished();

private:
    void follow();
    void beginRemoval(const std::vector<RemovableItem> &items);
    void endRemoval(const CleanupReport &report);
    void takeBackWhatIsBack(qint64 restored, qint64 left);
    void showRows();
    void showStartupItems();
    void showWatched();
    bool hasWatched() const { return m_check.result().processToWatch && !m_hasQuit; }

    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
    RemovableList m_candidates{this};
    std::vector<RemovableItem> m_inTheTrash; ///< by the last removal, and those that ran beside it
    qint64 m_thingsInTheTrash = 0;           ///< which they moved there
    RowModel m_startupItems{this};
    RowModel m_watched{this};
    int m_visit = 0;
    bool m_isBeginning = false; ///< the page has just appeared
    bool m_isStopped = false;   ///< the last check, before it had a result
    bool m_hasQuit = false;     ///< the program to watch was told to end
    FullCheck m_check;
};

} // namespace swabby
