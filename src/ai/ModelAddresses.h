#pragma once

#include <QtCore/QUrl>

namespace swabby {

/// Where the model is reached.
struct ModelAddresses {
    QUrl direct; ///< with the person's own key
    QUrl proxy;  ///< without one; invalid while there is no proxy yet
};

/// The built-in addresses, or those of SWABBY_AI_DIRECT_URL and SWABBY_AI_PROXY_URL in the environment. One
/// that may not be called is invalid.
ModelAddresses modelAddressesFromEnvironment();

/// Only an encrypted connection, or one that does not leave this computer.
bool mayBeCalled(const QUrl &address);

} // namespace swabby
