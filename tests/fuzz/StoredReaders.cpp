#include "cleanup/PutBackLine.h"
#include "fuzz/Readers.h"
#include "health/HistoryText.h"
#include "platform/posix/FileSettingsStore.h"
#include "settings/Settings.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <algorithm>
#include <cmath>

namespace swabby {
namespace {

using Text = Reader::Text;

struct StoredValues final : SettingsStore {
    explicit StoredValues(QJsonObject values) : stored(std::move(values)) {}

    Reading read(const QString &key) const override { return {stored.value(key), {}}; }
    bool change(const QString &key, const Edit &edit) override
    {
        stored.insert(key, edit(stored.value(key)));
        return true;
    }
    QString place() const override { return {}; }

    QJsonObject stored;
};

/// Whether a value that somebody gives for the setting is in force once it was written and read.
bool isKept(const SettingKey &key, const QString &given)
{
    const QJsonValue value = Settings::parse(key, given);
    if (value.isUndefined())
        return true;
    StoredValues store({{QLatin1String(key.name), value}});
    StoredValues again(settingsIn(QJsonDocument(store.stored).toJson()).values);
    const QJsonValue read = Settings(again).effective(key);
    return read == value || (key.words[0] && !key.wordIndex(given));
}

bool settings(Text text)
{
    const SettingsText file = settingsIn(bytesOf(text));
    StoredValues store(file.values);
    Settings settings(store);
    settings.value(setting<"rowDensity">);
    settings.value(setting<"lastWeeklySummaryDate">);
    settings.add(setting<"weeklyBytesFreed">, 1'000);
    settings.setPinned(QStringLiteral("Safari"), true);
    const bool arePathsAbsolute =
        std::ranges::all_of(settings.neverRemove(QStringLiteral("/home/nia")).paths, [](const QString &path) {
            return path.startsWith(QLatin1Char('/')) && !path.contains(QChar(0));
        });
    // One setting for each length of a text: all of them would take a while.
    const auto keys = Settings::keys();
    return (file.problem.isEmpty() || file.values.isEmpty()) && arePathsAbsolute &&
           isKept(*keys[text.size() % keys.size()], QString::fromUtf8(bytesOf(text))) &&
           std::ranges::all_of(keys, [&](const SettingKey *key) {
               return std::isfinite(settings.effective(*key).toDouble());
           });
}

bool history(Text text)
{
    const auto points = historyIn(bytesOf(text));
    if (!points)
        return true;
    // A date of millions of years is not kept to the second.
    constexpr double latest = 1e11;
    const auto again = historyIn(textOfHistory(*points));
    return again &&
           std::ranges::equal(*points, *again, [](const HistoryPoint &one, const HistoryPoint &other) {
               return std::isfinite(one.date) && one.cpu == other.cpu && one.mem == other.mem &&
                      (std::abs(one.date) > latest || std::abs(one.date - other.date) < 0.001);
           });
}

bool isSameLine(const TrashedItem &item)
{
    const auto again = itemOfPutBackLine(putBackLine(item));
    return again && *again == item && again->identity.inode == item.identity.inode &&
           again->identity.device == item.identity.device && again->identity.kind == item.identity.kind &&
           again->identity.size == item.identity.size &&
           again->identity.modifiedNanoseconds == item.identity.modifiedNanoseconds;
}

/// As a line, and as the name of something that was moved.
bool putBack(Text text)
{
    const auto item = itemOfPutBackLine(bytesOf(text));
    const FileIdentity identity = {.device = text.size(), .inode = ~0ULL, .kind = FileKind::file};
    return (!item || (item->from.is_absolute() && item->trashed.is_absolute() && isSameLine(*item))) &&
           isSameLine({'/' + std::string(text), "/home/nia/.Trash/" + std::string(text), identity});
}

} // namespace

Readers storedReaders()
{
    return {{"settings", settings}, {"history", history}, {"put_back", putBack}};
}

} // namespace swabby
