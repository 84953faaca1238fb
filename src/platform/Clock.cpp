#include "platform/Clock.h"

#include <chrono>

namespace swabby {

double SystemClock::now() const
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceEpoch).count();
}

} // namespace swabby
