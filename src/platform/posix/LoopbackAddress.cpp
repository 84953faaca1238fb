#include "platform/posix/LoopbackAddress.h"

#include <arpa/inet.h>
#include <netinet/in.h>

namespace swabby {
namespace {

constexpr unsigned char loopbackNetwork = 127; ///< first byte of all addresses of the older family

} // namespace

bool isLoopbackAddress(const char *text)
{
    in_addr four = {};
    if (inet_pton(AF_INET, text, &four) == 1)
        return reinterpret_cast<const unsigned char *>(&four)[0] == loopbackNetwork;
    in6_addr six = {};
    if (inet_pton(AF_INET6, text, &six) != 1)
        return false;
    // The older family's addresses are the last four bytes of some of these.
    return IN6_IS_ADDR_LOOPBACK(&six) || (IN6_IS_ADDR_V4MAPPED(&six) && six.s6_addr[12] == loopbackNetwork);
}

} // namespace swabby
