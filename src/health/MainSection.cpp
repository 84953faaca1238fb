#include "health/MainSection.h"

namespace swabby {
namespace {

struct Row {
    const char *name;
    const char *title;
    const char *symbol;
    const char *subtitle;
    QString MachineWords::*word = nullptr; ///< what stands for %1 in the subtitle
};

constexpr std::array<Row, allSections.size()> rows = {{
    {"overview", "Overview", "square.grid.2x2", "How your %1 is doing right now.", &MachineWords::computer},
    {"swabbyCheck", "Swabby Check", "checkmark.seal",
     "One-%1 scan of storage, startup items, running apps, duplicates, and developer clutter — summarized "
     "in plain English.",
     &MachineWords::press},
    {"speed", "Speed & Running Apps", "gauge.with.dots.needle.67percent",
     "Everything currently running, ranked by how much power it's using."},
    {"battery", "Battery", "battery.75", "Apps ranked by real energy impact, not just how busy they look."},
    {"network", "Network", "wifi", "Active data transfers and background sync."},
    {"storage", "Storage & Cleanup", "internaldrive",
     "Caches, duplicates, and forgotten large files you can safely clear."},
    {"startup", "Startup Items", "power", "Apps and background helpers that launch when you log in."},
    {"developer", "Developer Tools", "hammer", "%1", &MachineWords::developerClutter},
}};

const Row &rowOf(MainSection section)
{
    return rows[static_cast<std::size_t>(section)];
}

} // namespace

QString sectionName(MainSection section)
{
    return QString::fromUtf8(rowOf(section).name);
}

std::optional<MainSection> sectionFrom(const QString &name)
{
    for (const MainSection section : allSections)
        if (name == sectionName(section))
            return section;
    return std::nullopt;
}

QString sectionTitle(MainSection section)
{
    return QString::fromUtf8(rowOf(section).title);
}

QString sectionSubtitle(MainSection section, const MachineWords &words)
{
    const Row &row = rowOf(section);
    const QString text = QString::fromUtf8(row.subtitle);
    return row.word == nullptr ? text : text.arg(words.*row.word);
}

QString sectionSymbol(MainSection section)
{
    return QString::fromUtf8(rowOf(section).symbol);
}

QChar keyEquivalent(MainSection section)
{
    return QChar(49 + static_cast<int>(section));
}

} // namespace swabby
