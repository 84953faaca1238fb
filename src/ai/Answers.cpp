#include "ai/Answers.h"

namespace swabby {

std::optional<AskAnswer> AskAnswer::fromJson(const QJsonObject &object)
{
    const QJsonValue appToQuit = object.value(QLatin1String("appToQuit"));
    const QJsonValue explanation = object.value(QLatin1String("explanation"));
    if (!appToQuit.isString() || !explanation.isString())
        return std::nullopt;
    return AskAnswer{appToQuit.toString(), explanation.toString()};
}

std::optional<SwabbyCheckSummary> SwabbyCheckSummary::fromJson(const QJsonObject &object)
{
    const QJsonValue headline = object.value(QLatin1String("headline"));
    const QJsonValue summary = object.value(QLatin1String("summary"));
    if (!headline.isString() || !summary.isString())
        return std::nullopt;
    return SwabbyCheckSummary{headline.toString(), summary.toString()};
}

std::optional<CacheAssessment> CacheAssessment::fromJson(const QJsonObject &object)
{
    const QJsonValue looksSafe = object.value(QLatin1String("looksSafe"));
    const QJsonValue reason = object.value(QLatin1String("reason"));
    if (!looksSafe.isBool() || !reason.isString())
        return std::nullopt;
    return CacheAssessment{looksSafe.toBool(), reason.toString()};
}

} // namespace swabby
