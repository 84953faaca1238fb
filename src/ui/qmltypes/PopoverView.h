#pragma once

#include "health/HealthRules.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/MenuText.h"
#include "ui/qmltypes/RowModel.h"
#include "ui/qmltypes/ShownState.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace swabby {

/// The small panel beside the item in the menu bar.
class PopoverView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made with the window")
    Q_PROPERTY(bool isBlended MEMBER m_isBlended NOTIFY changed)
    Q_PROPERTY(bool isKnown READ isKnown NOTIFY changed)
    Q_PROPERTY(bool isHealthy READ isHealthy NOTIFY changed)
    Q_PROPERTY(bool isFirstRun READ isFirstRun NOTIFY changed)
    Q_PROPERTY(bool isRefreshing READ isRefreshing NOTIFY changed)
    Q_PROPERTY(QString healthWord READ healthWord NOTIFY changed)
    Q_PROPERTY(int healthTint READ healthTint NOTIFY changed)
    Q_PROPERTY(QString updated READ updated NOTIFY changed)
    Q_PROPERTY(swabby::RowModel *issues READ issues CONSTANT)
    Q_PROPERTY(swabby::RowModel *chips READ chips CONSTANT)
    Q_PROPERTY(QList<swabby::MenuEntry> menu READ menu CONSTANT)
    Q_PROPERTY(bool showHealthDetail READ showHealthDetail WRITE setShowHealthDetail NOTIFY changed)

public:
    explicit PopoverView(const UserInterfaceContext &context);

    /// Draws that; the last check's time is in seconds since 1970.
    void show(const ShownState &shown, const std::optional<double> &lastScan);

    /// Whether its window may be transparent in places.
    bool isBlended() const { return m_isBlended; }
    bool isKnown() const { return m_shown.isKnown; }
    bool isHealthy() const { return m_shown.health == HealthLevel::green; }
    /// Whether the introduction was never read to its end.
    bool isFirstRun() const { return m_isFirstRun; }
    bool isRefreshing() const { return m_isRefreshing; }
    QString healthWord() const { return swabby::healthWord(m_shown.health); }
    int healthTint() const { return static_cast<int>(tintOf(m_shown.health)); }
    /// When the figures are from, in a sentence.
    QString updated() const;
    RowModel *issues() { return &m_issues; }
    RowModel *chips() { return &m_chips; }
    QList<MenuEntry> menu() const { return itemMenu(); }
    /// Whether the issues are unfolded.
    bool showHealthDetail() const { return m_showHealthDetail; }
    void setShowHealthDetail(bool isShown);

    /// Opens the main window on the section of that name.
    Q_INVOKABLE void openSection(const QString &name) { openMainWindowAt(sectionFrom(name)); }
    /// Opens the main window where the issue at that place is dealt with, and folds the list.
    Q_INVOKABLE void openIssue(int index);
    Q_INVOKABLE void openCheck() { openMainWindowAt(MainSection::swabbyCheck); }
    Q_INVOKABLE void openMainWindow() { openMainWindowAt(std::nullopt); }
    Q_INVOKABLE void openAskWindow();
    Q_INVOKABLE void openSettingsWindow();
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void quit() { m_context.quit(); }
    /// What the menu's line of that command says.
    Q_INVOKABLE void follow(int command);

Q_SIGNALS:
    void changed();
    /// Another window was opened, so that the panel is done with.
    void left();

private:
    void followState();
    void openMainWindowAt(std::optional<MainSection> section);

    UserInterfaceContext m_context;
    ShownState m_shown;
    std::optional<double> m_lastScan;
    RowModel m_issues{this};
    RowModel m_chips{this};
    bool m_isBlended;
    bool m_isFirstRun = false;
    bool m_isRefreshing = false;
    bool m_showHealthDetail = false;
};

} // namespace swabby
