#pragma once

#include <QtCore/QString>

#include <optional>

namespace swabby {

/// Why the model did not answer.
enum class ModelFailure {
    noAssistant, ///< there is no key, and no way without one
    switchedOff, ///< by the person
    unsettled,   ///< the settings cannot be read, so nobody knows whether the person wants it
    keyRefused,
    limit,       ///< no credit, or too many questions
    offline,     ///< no connection, an address that may not be called, or no answer in time
    ownOffline,  ///< the same at the person's own address
    busy,        ///< the service could not, for whatever reason of its own
    retired,     ///< the model or the address is gone
    storeLocked, ///< the password store keeps a key and does not give it
    unreadable,  ///< something came that is no answer
    replaced,    ///< this Swabby was updated or removed while it runs, and what asks for it is another's
    cancelled,
};

/// Its name in JSON; one that is switched off, or may be, counts as no assistant, a Swabby that was replaced
/// as one that needs an update.
QString caseName(ModelFailure failure);

/// What the answer's HTTP status stands for; none for a good one.
std::optional<ModelFailure> failureOfStatus(int status);

} // namespace swabby
