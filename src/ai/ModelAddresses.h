#pragma once

#include <QtCore/QString>
#include <QtCore/QUrl>

#include <optional>

namespace swabby {

/// What takes the place of the addresses at which the model is reached; each as it was given, also when it
/// may not be called.
struct ModelAddresses {
    std::optional<QUrl> direct; ///< with the person's own key
    std::optional<QUrl> proxy;  ///< without one
};

/// Those of SWABBY_AI_DIRECT_URL and SWABBY_AI_PROXY_URL in the environment.
ModelAddresses modelAddressesFromEnvironment();

enum class ModelRoute { withKey, withoutKey };

/// Where one question goes.
struct ModelDestination {
    QUrl address;
    bool isPersons = false; ///< chosen in the settings
};

/// The one that was given for the route, else the person's own, if it is not empty, else the built-in one.
/// None where there is none without a key yet.
std::optional<ModelDestination> destinationFor(ModelRoute route, const ModelAddresses &given,
                                               const QString &persons);

} // namespace swabby
