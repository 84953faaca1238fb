#include "ai/ModelFailure.h"

namespace swabby {

QString caseName(ModelFailure failure)
{
    switch (failure) {
    case ModelFailure::noAssistant:
    case ModelFailure::switchedOff:
    case ModelFailure::unsettled:
        return QStringLiteral("noAssistant");
    case ModelFailure::keyRefused:
        return QStringLiteral("keyRefused");
    case ModelFailure::limit:
        return QStringLiteral("limit");
    case ModelFailure::offline:
    case ModelFailure::ownOffline:
        return QStringLiteral("offline");
    case ModelFailure::busy:
        return QStringLiteral("busy");
    case ModelFailure::retired:
    case ModelFailure::replaced:
        return QStringLiteral("retired");
    case ModelFailure::storeLocked:
        return QStringLiteral("storeLocked");
    case ModelFailure::unreadable:
        return QStringLiteral("unreadable");
    case ModelFailure::cancelled:
        return QStringLiteral("cancelled");
    }
    return {};
}

std::optional<ModelFailure> failureOfStatus(int status)
{
    constexpr int firstGood = 200;
    constexpr int lastGood = 299;
    if (status >= firstGood && status <= lastGood)
        return std::nullopt;
    switch (status) {
    case 401:
    case 403:
        return ModelFailure::keyRefused;
    case 402:
    case 429:
        return ModelFailure::limit;
    case 404:
    case 410:
        return ModelFailure::retired;
    default:
        return ModelFailure::busy;
    }
}

} // namespace swabby
