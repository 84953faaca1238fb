#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <optional>

namespace swabby {

// What the model is asked to answer as one JSON object. A record is decoded whole or not at all: every key
// has to be there with the right type, others do not matter.

struct AskAnswer {
    QString appToQuit; ///< as the model wrote it; empty when no application is to blame
    QString explanation;

    static std::optional<AskAnswer> fromJson(const QJsonObject &object);
    bool operator==(const AskAnswer &) const = default;
};

struct SwabbyCheckSummary {
    QString headline;
    QString summary;

    static std::optional<SwabbyCheckSummary> fromJson(const QJsonObject &object);
    bool operator==(const SwabbyCheckSummary &) const = default;
};

struct CacheAssessment {
    bool looksSafe = false;
    QString reason;

    static std::optional<CacheAssessment> fromJson(const QJsonObject &object);
    bool operator==(const CacheAssessment &) const = default;
};

} // namespace swabby
