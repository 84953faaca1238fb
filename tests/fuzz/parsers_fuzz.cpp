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

using namespace swabby;

namespace {

struct OneValueStore final : SettingsStore {
    QJsonValue stored;

    QJsonValue value(const QString &) const override { return stored; }
    bool change(const QString &, const Edit &) override { return true; }
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string_view text(reinterpret_cast<const char *>(data) + 1, size - 1);
    const QByteArray bytes(text.data(), static_cast<qsizetype>(text.size()));
    switch (data[0] % 22) {
    case 0:
        require(parseProcessRows(text, sortedListingLines).size() <= sortedListingLines);
        break;
    case 1:
        require(parseMatchingRows(text, {0, 1, 7, 1502}).size() <= 4);
        break;
    case 2:
        parseWeights(text);
        break;
    case 3:
        parseTop(text);
        break;
    case 4:
        parseNettop(text);
        break;
    case 5:
        parseHardwareReport(text);
        break;
    case 6:
        require(parseLoadedJob(text).isLoaded || !parseLoadedJob(text).pid);
        break;
    case 7:
        for (const QString &name : parseLoginItemNames(text))
            require(!name.isEmpty() && !name.contains(QLatin1Char(',')));
        break;
    case 8:
        parseBootTime(text);
        break;
    case 9:
        parseStartTime(text);
        break;
    case 10:
        parseLaunchJob(bytes);
        break;
    case 11:
        readSettings(bytes);
        break;
    case 12:
        readMachine(bytes);
        break;
    case 13:
        readHistory(bytes);
        break;
    case 14:
        require(!parseBundleFacts(bytes) || !parseBundleFacts(bytes)->identifier.isEmpty());
        break;
    case 15:
        parseSimulatorRuntimes(bytes, 1e9);
        break;
    case 16:
        parseDockerUsage(text);
        break;
    case 17:
        require(parseByteString(text) >= 0);
        break;
    case 18:
        parseIsoTime(QString::fromUtf8(bytes));
        break;
    case 19:
        require(parseDiskUsage(text) % 1024 == 0);
        break;
    case 20:
        for (const auto &path : DeepScanner::parseProjectSearch(text, "/r"))
            require(path.native().starts_with("/r/") && path.filename() == "node_modules" &&
                    path.lexically_normal().native().starts_with("/r/"));
        if (const std::string folder = userFolderIn(text, "DOWNLOAD", "/h").native(); !folder.empty())
            require(!std::string("/h/").starts_with(folder + '/'));
        break;
    case 21:
        for (const int pixels : {0, 48, 1024})
            require(pngOfIconFile(bytes, pixels).isEmpty() || bytes.startsWith("icns"));
        parseBundleIcon(bytes);
        break;
    }
    return 0;
}
