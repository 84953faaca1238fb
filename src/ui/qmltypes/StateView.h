#pragma once

#include "health/HealthRules.h"
#include "ui/presentation/BatteryText.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/NetworkText.h"
#include "ui/presentation/ProcessText.h"
#include "ui/qmltypes/PermissionRequest.h"
#include "ui/qmltypes/RowModel.h"
#include "ui/qmltypes/ShownState.h"
#include "ui/qmltypes/Sparkline.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

namespace swabby {

/// What is published in the words and rows that the pages show.
class StateView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool isKnown READ isKnown NOTIFY changed)
    Q_PROPERTY(bool isHealthy READ isHealthy NOTIFY changed)
    Q_PROPERTY(QString healthWord READ healthWord NOTIFY changed)
    Q_PROPERTY(int healthTint READ healthTint NOTIFY changed)
    Q_PROPERTY(QString checkInvitation READ checkInvitation NOTIFY changed)
    Q_PROPERTY(QString noProcesses READ noProcesses NOTIFY changed)
    Q_PROPERTY(swabby::SpeedDay speedDay READ speedDay NOTIFY changed)
    Q_PROPERTY(bool hasSpeedLine READ hasSpeedLine NOTIFY changed)
    Q_PROPERTY(QString averageSpeed READ averageSpeed NOTIFY changed)
    Q_PROPERTY(QString speedSentence READ speedSentence NOTIFY changed)
    Q_PROPERTY(swabby::BatterySummary battery READ battery NOTIFY changed)
    Q_PROPERTY(QString networkRate READ networkRate NOTIFY changed)
    Q_PROPERTY(QString networkSentence READ networkSentence NOTIFY changed)
    Q_PROPERTY(swabby::PermissionRequest closedTrash READ closedTrash NOTIFY changed)
    Q_PROPERTY(swabby::PermissionRequest refusedRemoval READ refusedRemoval NOTIFY changed)
    Q_PROPERTY(swabby::PermissionRequest missingItems READ missingItems NOTIFY changed)
    Q_PROPERTY(bool isCompact READ isCompact NOTIFY changed)
    Q_PROPERTY(QString moreFound READ moreFound NOTIFY searchTextChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(swabby::RowModel *gauges READ gauges CONSTANT)
    Q_PROPERTY(swabby::RowModel *issues READ issues CONSTANT)
    Q_PROPERTY(swabby::RowModel *speedIssues READ speedIssues CONSTANT)
    Q_PROPERTY(swabby::RowModel *leaks READ leaks CONSTANT)
    Q_PROPERTY(swabby::RowModel *topProcesses READ topProcesses CONSTANT)
    Q_PROPERTY(swabby::RowModel *processes READ processes CONSTANT)
    Q_PROPERTY(swabby::RowModel *drainers READ drainers CONSTANT)
    Q_PROPERTY(swabby::RowModel *networkUsers READ networkUsers CONSTANT)
    Q_PROPERTY(swabby::RowModel *browsers READ browsers CONSTANT)
    Q_PROPERTY(swabby::RowModel *startupToReview READ startupToReview CONSTANT)
    Q_PROPERTY(swabby::RowModel *startupRest READ startupRest CONSTANT)

public:
    using QObject::QObject;

    void show(const ShownState &shown, bool isCompact);
    /// Everything that runs, which a search goes through.
    void showEverything(const QList<ProcessSample> &programs);
    const ShownState &shown() const { return m_shown; }

    bool isKnown() const { return m_shown.isKnown; }
    bool isHealthy() const { return m_shown.health == HealthLevel::green; }
    QString healthWord() const { return swabby::healthWord(m_shown.health); }
    int healthTint() const { return static_cast<int>(tintOf(m_shown.health)); }
    QString checkInvitation() const { return checkInvitationText(isKnown(), isHealthy(), m_shown.words); }
    QString noProcesses() const { return noProcessesText(isKnown()); }
    SpeedDay speedDay() const { return {speedStretches(m_shown.history, m_shown.time)}; }
    bool hasSpeedLine() const;
    QString averageSpeed() const { return averageSpeedText(m_shown.history, m_shown.time); }
    QString speedSentence() const { return speedHistorySentence(m_shown.history, m_shown.time); }
    BatterySummary battery() const { return batterySummary(m_shown.stats, m_shown.words); }
    QString networkRate() const { return totalNetworkRate(m_shown.networkUsers); }
    QString networkSentence() const { return swabby::networkSentence(m_shown.networkUsers); }
    PermissionRequest closedTrash() const { return request(Permission::fullDiskAccess); }
    PermissionRequest refusedRemoval() const { return request(Permission::applicationManagement); }
    PermissionRequest missingItems() const { return request(Permission::automation); }
    bool isCompact() const { return m_isCompact; }
    /// What a search has found that is not listed; empty while all is.
    QString moreFound() const { return moreFoundText(m_moreFound); }
    QString searchText() const { return m_searchText; }
    void setSearchText(const QString &text);

    RowModel *gauges() { return &m_gauges; }
    RowModel *issues() { return &m_issues; }
    RowModel *speedIssues() { return &m_speedIssues; }
    RowModel *leaks() { return &m_leaks; }
    RowModel *topProcesses() { return &m_topProcesses; }
    RowModel *processes() { return &m_processes; }
    RowModel *drainers() { return &m_drainers; }
    RowModel *networkUsers() { return &m_networkUsers; }
    RowModel *browsers() { return &m_browsers; }
    RowModel *startupToReview() { return &m_startupToReview; }
    RowModel *startupRest() { return &m_startupRest; }

Q_SIGNALS:
    void changed();
    void searchTextChanged();

private:
    void showProcesses();
    PermissionRequest request(Permission what) const { return {what, m_shown.refused, m_shown.words}; }

    ShownState m_shown;
    bool m_isCompact = false;
    QString m_searchText;
    std::int32_t m_topPid = 0;         ///< of the program that is shown as the busiest
    QList<ProcessSample> m_everything; ///< while somebody searches
    qsizetype m_moreFound = 0;
    // QML deletes what it is handed without a parent.
    RowModel m_gauges{this};
    RowModel m_issues{this};
    RowModel m_speedIssues{this};
    RowModel m_leaks{this};
    RowModel m_topProcesses{this};
    RowModel m_processes{this};
    RowModel m_drainers{this};
    RowModel m_networkUsers{this};
    RowModel m_browsers{this};
    RowModel m_startupToReview{this};
    RowModel m_startupRest{this};
};

} // namespace swabby
