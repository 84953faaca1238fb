#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <type_traits>

namespace swabby {

struct ReleaseReference {
    void operator()(CFTypeRef reference) const { CFRelease(reference); }
};

/// A reference that a function with Create or Copy in its name has given away.
template <typename Reference>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, ReleaseReference>;

} // namespace swabby
