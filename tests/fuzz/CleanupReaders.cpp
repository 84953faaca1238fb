#include "ai/Answers.h"
#include "ai/ModelText.h"
#include "ai/network/ModelWire.h"
#include "cleanup/ContainerEngine.h"
#include "cleanup/DeepScanner.h"
#include "cleanup/DeveloperToolText.h"
#include "cleanup/DiskUsage.h"
#include "fuzz/Readers.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <functional>

namespace swabby {
namespace {

using Text = Reader::Text;

bool diskUsage(Text text)
{
    const std::int64_t bytes = parseDiskUsage(text);
    return bytes % 1024 == 0 && (bytes >= 0 || text.find('-') != Text::npos);
}

bool projectSearch(Text text)
{
    const auto folders = DeepScanner::parseProjectSearch(text, "/r");
    return folders.size() <= 20 && std::ranges::all_of(folders, [](const auto &path) {
               return path.filename() == "node_modules" && path.native().starts_with("/r/") &&
                      path.lexically_normal().native().starts_with("/r/");
           });
}

bool containers(Text text)
{
    const auto rows = parseDockerUsage(text);
    return parseByteString(text) >= 0 && std::ranges::all_of(rows, [](const DockerRow &row) {
               return parseByteString(row.reclaimable.toStdString()) >= 0 &&
                      !row.type.contains(QLatin1Char('\n'));
           });
}

bool simulators(Text text)
{
    constexpr double now = 1'790'000'000;
    parseIsoTime(QString::fromUtf8(bytesOf(text)));
    const auto runtimes = parseSimulatorRuntimes(bytesOf(text), now);
    return std::ranges::is_sorted(runtimes, std::greater<>(), [](const SimulatorRuntimeInfo &runtime) {
        return runtime.daysSinceUsed.value_or(0);
    });
}

/// What the model said, in all of the ways that it is asked.
bool modelAnswer(Text text)
{
    const auto reply = messagesReplyText(bytesOf(text));
    const QString said = stripCodeFences(reply.value_or(QString::fromUtf8(bytesOf(text))));
    const QJsonObject object = QJsonDocument::fromJson(said.toUtf8()).object();
    const bool isComplete = (!AskAnswer::fromJson(object) || object.size() >= 2) &&
                            (!SwabbyCheckSummary::fromJson(object) || object.size() >= 2) &&
                            (!CacheAssessment::fromJson(object) || object.size() >= 2);
    return isComplete && said == said.trimmed();
}

} // namespace

Readers cleanupReaders()
{
    return {
        {"du", diskUsage},
        {"find", projectSearch},
        {"docker", containers},
        {"docker_context",
         [](Text text) {
             return currentContext(bytesOf(text)).size() <= 2 * text.size() &&
                    engineAddress(bytesOf(text)).size() <= 2 * text.size();
         }},
        {"simctl", simulators},
        {"model", modelAnswer},
        {"model_wire",
         [](Text text) {
             const auto result = saidIn<ModelResult>(bytesOf(text));
             return !result || result->body.size() <= bytesOf(text).size();
         }},
    };
}

} // namespace swabby
