#include "fuzz/Readers.h"
#include "platform/Machine.h"
#include "platform/MachineFolder.h"
#include "platform/machinefolder/MachineDescription.h"
#include "platform/machinefolder/RecordedAnswers.h"
#include "platform/mactools/NettopText.h"
#include "platform/mactools/PsText.h"
#include "recording/Rewriting.h"
#include "recording/ToolTexts.h"

#include <QtCore/QJsonDocument>

#include <algorithm>

namespace swabby {
namespace {

using Text = Reader::Text;

bool machine(Text text)
{
    MachineDescription machine(QJsonDocument::fromJson(bytesOf(text)).object());
    for (int refresh = 0; refresh < 2; ++refresh) {
        machine.nextCpuTicks();
        machine.nextThermalState();
    }
    machine.now();
    machine.cpuTicksAtStart();
    machine.memoryPages();
    machine.physicalMemory();
    machine.swapUsedBytes();
    machine.disk();
    machine.powerSource();
    machine.userId();
    machine.ownProcessId();
    machine.bundleId();
    machine.runningApplications();
    machine.unsignalablePids();
    machine.trashRefuses();
    const auto isBelow = [](const std::filesystem::path &path) {
        return path.is_relative() && (path.empty() || *path.begin() != "..");
    };
    return isBelow(machine.cachesFolder()) &&
           std::ranges::all_of(machine.knownCaches(), isBelow, &KnownCache::path);
}

/// What a tool said, and the file of what it said.
bool answers(Text text)
{
    RecordedAnswers(std::string("/Users/nia"), bytesOf(text)).next("/bin/ps", {});
    const std::string said(text);
    const std::string asked(text.substr(0, text.size() / 2));
    RecordedAnswers again(std::string(folderMark), RecordedAnswers::file({{"/bin/ps", {asked}, said}}));
    return again.knows("/bin/ps") && again.next("/bin/ps", {asked}) == said;
}

/// What is recorded of a tool's answer, with names in the place of people's own, as often as it was read
/// before.
bool rewritten(Text text)
{
    Machine machine;
    machine.cleanup.home = "/Users/nia";
    Rewriting rewriting(machine, PeoplesNames::replaced);
    ToolTexts texts(rewriting);
    for (const char *tool : {"/bin/ps", "/usr/bin/top", "/usr/bin/nettop", "/usr/bin/du", "/usr/bin/find",
                             "/usr/bin/osascript", "/usr/sbin/system_profiler", "/usr/sbin/sysctl"})
        texts.add({tool, {"-Ao", "pid,ppid,pcpu,pmem,rss,comm"}, std::string(text)});
    const auto said = [&](std::size_t tool) { return Text(*texts.runs()[tool].text); };
    return parseProcessRows(said(0)).size() == parseProcessRows(text).size() &&
           parseNettop(said(2)).size() == parseNettop(text).size();
}

} // namespace

Readers recordingReaders()
{
    return {{"machine", machine}, {"answers", answers}, {"recorded_texts", rewritten}};
}

} // namespace swabby
