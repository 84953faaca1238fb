#pragma once

#include "platform/SecretStore.h"

namespace swabby {

/// One call to the desktop's Secret Service, which takes as long as the service does or until it is called
/// off. Made by the library that is named below, which is loaded when there is a service to call.
class Keyring {
public:
    virtual ~Keyring() = default;

    virtual SecretReading read(const QString &account, Unlocking unlocking) = 0;
    virtual bool write(const QString &value, const QString &account) = 0;
    virtual void remove(const QString &account) = 0;

    /// Ends the call that is under way, if the service lets go of it; from any thread.
    virtual void callOff() = 0;
};

inline constexpr auto keyringLibrary = "libswabby-keyring.so";
inline constexpr auto keyringMaker = "swabbyMakeKeyring";
/// Makes one that the caller owns.
using KeyringMaker = Keyring *();

} // namespace swabby
