#include "health/HealthRules.h"
#include "platform/linux/LinuxWords.h"
#include "ui/presentation/BatteryText.h"
#include "ui/presentation/CleanupText.h"
#include "ui/presentation/HealthText.h"
#include "ui/presentation/Sections.h"
#include "ui/presentation/StartupText.h"
#include "ui/presentation/WelcomeText.h"
#include "ui/presentation/Words.h"

#include <QtCore/QMetaProperty>
#include <QtCore/QRegularExpression>
#include <QtTest/QTest>

using namespace swabby;

class LinuxSentencesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLinuxComputerIsCalledNoMac()
    {
        Machine machine;
        machine.words = linuxWords({}, {});
        machine.mayHaveBattery = false;
        SystemStats stats;
        stats.memTotalBytes = stats.diskTotalBytes = 1'000'000;
        stats.memUsedBytes = 990'000;
        stats.diskFreeBytes = 10'000;
        stats.batteryPercent = stats.batteryHealthPercent = 1;
        LoginItem item;
        item.plistPath = u"/x"_qs;
        QStringList said = {batterySummary(stats, machine.words).condition, queueNoteText(machine.words),
                            checkInvitationText(true, false, machine.words)};
        const Words words(machine.words);
        for (int index = 0; index < words.metaObject()->propertyCount(); ++index)
            said.append(words.metaObject()->property(index).read(&words).toString());
        for (const SectionRow &row : sectionRows(machine))
            said << row.title << row.subtitle;
        QVERIFY(!said.contains(u"Battery"_qs)); // which it does not have
        for (const WelcomePoint &point : welcomePoints(TrayItem::Place::there, machine.words))
            said.append(point.heading);
        for (const MenuEntry &entry : startupMenu(item, machine.words))
            said.append(entry.label);
        for (const ThermalState heat : {ThermalState::serious, ThermalState::critical})
            for (const double load : {10.0, 70.0, 90.0}) {
                stats.thermalState = heat;
                stats.cpuUsagePercent = load;
                for (const HealthIssue &issue :
                     computeHealth(
                         stats, {{.pid = 7, .name = u"Mill"_qs, .path = u"/bin/Mill"_qs, .cpuPercent = load}},
                         {}, machine.words)
                         .issues)
                    said << issue.what << issue.why << issue.how;
            }
        const QRegularExpression mac(
            u"\\b(mac|macos|finder|dock|xcode|simulators?|apple|menu bar|system settings|taps?)\\b"_qs,
            QRegularExpression::CaseInsensitiveOption);
        QCOMPARE(said.filter(mac), QStringList());
    }
};

QTEST_GUILESS_MAIN(LinuxSentencesTest)
#include "LinuxSentencesTest.moc"
