#pragma once

#include "engine/ByteCount.h"
#include "flows/cleanup/StorageScans.h"
#include "ui/qmltypes/AssistantTrouble.h"
#include "ui/qmltypes/RemovableList.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <set>

namespace swabby {

class MainWindowCoordinator;

/// Everything that can be cleaned, and the queue of what was chosen.
class StorageView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(QString freeText READ freeText NOTIFY changed)
    Q_PROPERTY(QString totalText READ totalText NOTIFY changed)
    Q_PROPERTY(double usedFraction READ usedFraction NOTIFY changed)
    Q_PROPERTY(int usedTint READ usedTint NOTIFY changed)
    Q_PROPERTY(double clearableFraction READ clearableFraction NOTIFY changed)
    Q_PROPERTY(QString clearableText READ clearableText NOTIFY changed)
    Q_PROPERTY(QString queueNote READ queueNote CONSTANT)
    Q_PROPERTY(QString queueText READ queueText NOTIFY changed)
    Q_PROPERTY(bool canCleanUp READ canCleanUp NOTIFY changed)
    Q_PROPERTY(QString sentNote READ sentNote NOTIFY changed)
    Q_PROPERTY(swabby::AssistantTrouble trouble READ trouble NOTIFY changed)
    Q_PROPERTY(QString packagedPrograms READ packagedPrograms CONSTANT)
    Q_PROPERTY(QString softwareManager READ softwareManager NOTIFY changed)
    Q_PROPERTY(swabby::RemovableList *quickClean READ quickClean CONSTANT)
    Q_PROPERTY(swabby::RemovableList *unfamiliar READ unfamiliar CONSTANT)
    Q_PROPERTY(swabby::RemovableList *duplicates READ duplicates CONSTANT)
    Q_PROPERTY(swabby::RemovableList *forgottenFiles READ forgottenFiles CONSTANT)
    Q_PROPERTY(swabby::RemovableList *applications READ applications CONSTANT)

public:
    StorageView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator, QObject *parent);

    /// The page appears; the first time it looks for caches.
    Q_INVOKABLE void enter();
    Q_INVOKABLE void scan(swabby::RemovableList *list);
    Q_INVOKABLE void stop(swabby::RemovableList *list);
    Q_INVOKABLE void setSelected(const QString &id, bool isSelected);
    Q_INVOKABLE void setAllSelected(swabby::RemovableList *list, bool isSelected);
    /// Asks before that unfamiliar folder goes.
    Q_INVOKABLE void removeAlone(const QString &id);
    Q_INVOKABLE void openAssistantSettings() { m_context.openAssistantSettings(); }
    /// Asks before everything in the queue goes.
    Q_INVOKABLE void cleanUp() { ask(m_queue); }
    /// Opens what removes the system's packages.
    Q_INVOKABLE void openSoftwareManager();
    /// Looks for what goes with an application, then asks.
    Q_INVOKABLE void uninstall(const QString &id) { m_scans.prepare(id); }
    /// Asks before that application, which runs, is quit.
    Q_INVOKABLE void quitApplication(const QString &id) { m_scans.findProcess(id); }

    bool isScanning() const
    {
        return m_quickClean.text().isScanning || m_duplicates.text().isScanning ||
               m_forgottenFiles.text().isScanning || m_applications.text().isScanning;
    }
    QString freeText() const { return fileByteCount(m_context.state.stats().diskFreeBytes); }
    QString totalText() const { return swabby::totalText(m_context.state.stats()); }
    /// Of the disk, without what can be cleared.
    double usedFraction() const;
    int usedTint() const;
    double clearableFraction() const;
    /// Of what was looked over, and what that is.
    const QString &clearableText() const { return m_clearableText; }
    /// What the queue is.
    QString queueNote() const { return queueNoteText(m_context.state.machine().words); }
    QString queueText() const { return swabby::queueText(m_queue); }
    bool canCleanUp() const { return !m_queue.empty(); }
    /// What left this computer for the suggestions; empty when nothing did.
    QString sentNote() const { return suggestionsNoteText(m_scans.findings(ClutterKind::quickClean)); }
    /// Why the suggestions are none of the assistant's.
    AssistantTrouble trouble() const
    {
        return AssistantTrouble(m_scans.findings(ClutterKind::quickClean).failure);
    }
    /// Who removes what the system's packages brought; empty where nothing did.
    QString packagedPrograms() const { return m_context.state.machine().words.packagedPrograms; }
    /// What the button that opens it says; empty when there is none.
    const QString &softwareManager() const { return m_softwareManager; }
    RemovableList *quickClean() { return &m_quickClean; }
    RemovableList *unfamiliar() { return &m_unfamiliar; }
    RemovableList *duplicates() { return &m_duplicates; }
    RemovableList *forgottenFiles() { return &m_forgottenFiles; }
    RemovableList *applications() { return &m_applications; }

Q_SIGNALS:
    void changed();

private:
    void show();
    void showQuickClean();
    void showApplications();
    RemovableRowText rowOf(const RemovableItem &item) const;
    std::optional<ClutterKind> scanOf(const RemovableList *list) const;
    /// Takes every ticked item into the queue, and adds up what could be.
    void fillQueue();
    /// Whether what is found lies on the volume that is shown.
    bool isOfVolumeShown() const;
    void ask(const std::vector<RemovableItem> &items);
    void askForPrepared();

    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
    RemovableList m_quickClean{this};
    RemovableList m_unfamiliar{this};
    RemovableList m_duplicates{this};
    RemovableList m_forgottenFiles{this};
    RemovableList m_applications{this};
    std::set<QString> m_selected;
    std::vector<RemovableItem> m_queue;
    std::vector<RemovableItem> m_prepared; ///< to be asked about
    std::int64_t m_clearableBytes = 0;
    QString m_clearableText;
    QString m_softwareManager;
    StorageScans m_scans;
};

} // namespace swabby
