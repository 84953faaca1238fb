#pragma once

#include "flows/cleanup/StorageScans.h"
#include "ui/presentation/DeveloperText.h"
#include "ui/qmltypes/RemovableList.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

class MainWindowCoordinator;

/// What developers' tools have piled up.
class DeveloperView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(swabby::ScanText text READ text NOTIFY changed)
    Q_PROPERTY(bool isDone READ isDone NOTIFY changed)
    Q_PROPERTY(QString clearable READ clearable NOTIFY changed)
    Q_PROPERTY(QString runtimesSize READ runtimesSize NOTIFY changed)
    Q_PROPERTY(bool dockerIsOff READ dockerIsOff NOTIFY changed)
    Q_PROPERTY(QList<swabby::DockerRowText> dockerRows READ dockerRows NOTIFY changed)
    Q_PROPERTY(QString dockerNote READ dockerNote NOTIFY changed)
    Q_PROPERTY(QString toolCachesSize READ toolCachesSize NOTIFY changed)
    Q_PROPERTY(swabby::RemovableList *buildCaches READ buildCaches CONSTANT)
    Q_PROPERTY(swabby::RemovableList *docker READ docker CONSTANT)
    Q_PROPERTY(swabby::RemovableList *runtimes READ runtimes CONSTANT)
    Q_PROPERTY(swabby::RemovableList *toolCaches READ toolCaches CONSTANT)

public:
    DeveloperView(const UserInterfaceContext &context, MainWindowCoordinator &coordinator, QObject *parent);

    Q_INVOKABLE void scan() { m_scans.begin(ClutterKind::developer); }
    Q_INVOKABLE void stop() { m_scans.stop(ClutterKind::developer); }
    /// Asks first.
    Q_INVOKABLE void remove(const QString &id);

    ScanText text() const { return scanText(m_scans, ClutterKind::developer); }
    bool isDone() const { return m_scans.isDone(ClutterKind::developer); }
    bool isScanning() const { return m_scans.isScanning(ClutterKind::developer); }
    QString clearable() const { return clearableText(found().items); }
    // Each is empty when there is no such thing.
    QString runtimesSize() const;
    QString toolCachesSize() const;
    /// Whether the container engine is there and does not answer.
    bool dockerIsOff() const { return found().docker.state == DeveloperCleanup::DockerState::notRunning; }
    QList<DockerRowText> dockerRows() const { return dockerRowTexts(found().docker.rows); }
    QString dockerNote() const { return dockerNoteText(found().docker.rows); }
    // At most one each.
    RemovableList *buildCaches() { return &m_buildCaches; }
    RemovableList *docker() { return &m_docker; }
    RemovableList *runtimes() { return &m_runtimes; }
    RemovableList *toolCaches() { return &m_toolCaches; }

Q_SIGNALS:
    void changed();

private:
    void show();
    /// What the search found; nothing before there is one.
    const StorageScans::Findings &found() const { return m_scans.findings(ClutterKind::developer); }

    UserInterfaceContext m_context;
    MainWindowCoordinator &m_coordinator;
    RemovableList m_buildCaches{this};
    RemovableList m_docker{this};
    RemovableList m_runtimes{this};
    RemovableList m_toolCaches{this};
    StorageScans m_scans; ///< for this kind only
};

} // namespace swabby
