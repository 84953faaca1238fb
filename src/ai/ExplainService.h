#pragma once

#include "engine/ProcessSample.h"
#include "platform/SecretStore.h"
#include "startup/LoginItem.h"

#include <QtCore/QString>

#include <optional>
#include <variant>

namespace swabby {

/// Something a person wants explained.
struct ExplainRequest {
    std::variant<ProcessSample, LoginItem> kind;

    /// "p-" and the process id, or "l-" and the startup item's id.
    QString id() const;
};

/// What is advised, from the figures alone, without the model.
ActionRecommendation recommendation(const ExplainRequest &request);
/// The same in the words of the card.
QString recommendationLabel(ActionRecommendation recommendation);

namespace ExplainService {

/// The key for the model: the stored one, else that of ANTHROPIC_API_KEY in the environment, as they stand.
/// No value when neither is there or both are empty. May wait for the secret store: background work only.
SecretReading anthropicAPIKey(SecretStore &store, Unlocking unlocking = Unlocking::never,
                              const StopToken &stop = {});

} // namespace ExplainService

} // namespace swabby
