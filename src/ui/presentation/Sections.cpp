#include "ui/presentation/Sections.h"

namespace swabby {
namespace {

QString pageFile(MainSection section)
{
    switch (section) {
    case MainSection::overview:
        return QStringLiteral("OverviewPage.qml");
    case MainSection::speed:
        return QStringLiteral("SpeedPage.qml");
    case MainSection::battery:
        return QStringLiteral("BatteryPage.qml");
    case MainSection::network:
        return QStringLiteral("NetworkPage.qml");
    case MainSection::startup:
        return QStringLiteral("StartupPage.qml");
    case MainSection::swabbyCheck:
        return QStringLiteral("CheckPage.qml");
    case MainSection::storage:
        return QStringLiteral("StoragePage.qml");
    case MainSection::developer:
        return QStringLiteral("DeveloperPage.qml");
    }
    return {};
}

} // namespace

SectionRow sectionRow(MainSection section, const MachineWords &words)
{
    return {sectionName(section),
            sectionTitle(section),
            sectionSubtitle(section, words),
            sectionSymbol(section),
            QStringLiteral("Ctrl+") + keyEquivalent(section),
            QStringLiteral("sections/") + pageFile(section),
            section != MainSection::overview};
}

QList<SectionRow> sectionRows(const Machine &machine)
{
    QList<SectionRow> rows;
    for (const MainSection section : allSections)
        if (section != MainSection::battery || machine.mayHaveBattery)
            rows.append(sectionRow(section, machine.words));
    return rows;
}

} // namespace swabby
