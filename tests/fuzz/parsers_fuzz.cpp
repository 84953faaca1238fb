// Feeds arbitrary bytes to everything that reads other programs' text. The first byte chooses the reader:
//     TMPDIR=/dev/shm parsers_fuzz -max_len=4096 CORPUS

#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperToolText.h"
#include "cleanup/DiskUsage.h"
#include "health/HistoryStore.h"
#include "platform/linux/LinuxCleanupPlaces.h"
#include "platform/machinefolder/MachineDescription.h"
#include "platform/mactools/ApplicationBundle.h"
#include "platform/mactools/HardwareReport.h"
#include "platform/mactools/IconFile.h"
#include "platform/mactools/LaunchdText.h"
#include "platform/mactools/MacBootClock.h"
#include "platform/mactools/NettopText.h"
#include "platform/mactools/PsText.h"
#include "platform/mactools/TopText.h"
#include "settings/Settings.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QTemporaryDir>

#include <functional>

using namespace swabby;

namespace {

struct OneValueStore final : SettingsStore {
    QJsonValue stored;

    Reading read(const QString &) const override { return {stored, {}}; }
    bool change(const QString &, const Edit &) override { return true; }
    QString place() const override { return {}; }
};

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void readSettings(const QByteArray &bytes)
{
    OneValueStore store;
    store.stored = QJsonDocument::fromJson(bytes).array().first();
    const Settings settings(store);
    settings.neverRemove({});
    for (const SettingKey *key : Settings::keys()) {
        settings.effective(*key);
        Settings::parse(*key, QString::fromUtf8(bytes));
    }
}

void readMachine(const QByteArray &bytes)
{
    MachineDescription machine(QJsonDocument::fromJson(bytes).object());
    for (int i = 0; i < 2; ++i) {
        machine.nextCpuTicks();
        machine.nextThermalState();
    }
    machine.now();
    machine.memoryPages();
    machine.physicalMemory();
    machine.swapUsedBytes();
    machine.disk();
    machine.powerSource();
    machine.userId();
    machine.ownProcessId();
    machine.bundleId();
    machine.runningApplications();
}

void readHistory(const QByteArray &bytes)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("history.json")));
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    for (const HistoryPoint &point : HistoryStore::load(folder.path(), 1e9))
        require(point.date >= 1e9 - historySpanSeconds);
}

using Text = std::string_view;

/// Each reads the text and the same as bytes.
const std::function<void(Text, const QByteArray &)> readers[] = {
    [](Text text, const QByteArray &) {
        require(parseProcessRows(text, sortedListingLines).size() <= sortedListingLines);
    },
    [](Text text, const QByteArray &) {
        require(parseMatchingRows(text, {0, 1, 7, 1502}).size() <= 4);
    },
    [](Text text, const QByteArray &) { parseWeights(text); },
    [](Text text, const QByteArray &) { parseTop(text); },
    [](Text text, const QByteArray &) { parseNettop(text); },
    [](Text text, const QByteArray &) { parseHardwareReport(text); },
    [](Text text, const QByteArray &) {
        require(parseLoadedJob(text).isLoaded || !parseLoadedJob(text).pid);
    },
    [](Text text, const QByteArray &) {
        for (const QString &name : parseLoginItemNames(text))
            require(!name.isEmpty() && !name.contains(QLatin1Char(',')));
    },
    [](Text text, const QByteArray &) { parseBootTime(text); },
    [](Text text, const QByteArray &) { parseStartTime(text); },
    [](Text, const QByteArray &bytes) { parseLaunchJob(bytes); },
    [](Text, const QByteArray &bytes) { readSettings(bytes); },
    [](Text, const QByteArray &bytes) { readMachine(bytes); },
    [](Text, const QByteArray &bytes) { readHistory(bytes); },
    [](Text, const QByteArray &bytes) {
        require(!parseBundleFacts(bytes) || !parseBundleFacts(bytes)->identifier.isEmpty());
    },
    [](Text, const QByteArray &bytes) { parseSimulatorRuntimes(bytes, 1e9); },
    [](Text text, const QByteArray &) { parseDockerUsage(text); },
    [](Text text, const QByteArray &) { require(parseByteString(text) >= 0); },
    [](Text, const QByteArray &bytes) { parseIsoTime(QString::fromUtf8(bytes)); },
    [](Text text, const QByteArray &) { require(parseDiskUsage(text) % 1024 == 0); },
    [](Text text, const QByteArray &) {
        for (const auto &path : DeepScanner::parseProjectSearch(text, "/r"))
            require(path.native().starts_with("/r/") && path.filename() == "node_modules" &&
                    path.lexically_normal().native().starts_with("/r/"));
        if (const std::string folder = userFolderIn(text, "DOWNLOAD", "/h").native(); !folder.empty())
            require(!std::string("/h/").starts_with(folder + '/'));
    },
    [](Text, const QByteArray &bytes) {
        for (const int pixels : {0, 48, 1024})
            require(pngOfIconFile(bytes, pixels).isEmpty() || bytes.startsWith("icns"));
        parseBundleIcon(bytes);
    },
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string_view text(reinterpret_cast<const char *>(data) + 1, size - 1);
    const QByteArray bytes(text.data(), static_cast<qsizetype>(text.size()));
    readers[data[0] % std::size(readers)](text, bytes);
    return 0;
}
