#include "cleanup/duplicates/Contents.h"

#include <gcrypt.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <string_view>

namespace swabby {
namespace {

constexpr auto chunkSize = static_cast<std::int64_t>(ReadBuffer::largestChunk);

struct CloseDigest {
    void operator()(gcry_md_hd_t digest) const { gcry_md_close(digest); }
};
using Digest = std::unique_ptr<gcry_md_handle, CloseDigest>;

/// Null when there is no memory for one.
Digest beginSha256()
{
    // The library wants to be asked for its version before anything else; what is digested is no secret.
    static const bool isReady =
        gcry_check_version(nullptr) != nullptr && gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0) == 0;
    gcry_md_hd_t digest = nullptr;
    if (isReady)
        gcry_md_open(&digest, GCRY_MD_SHA256, 0);
    return Digest(digest);
}

/// Walks a file of that size in chunks until use(offset, size) returns false; whether it came to the end.
template <typename Use>
bool forEachChunk(std::int64_t fileSize, Use use)
{
    for (std::int64_t offset = 0; offset < fileSize; offset += chunkSize)
        if (!use(offset, static_cast<std::size_t>(std::min(chunkSize, fileSize - offset))))
            return false;
    return true;
}

} // namespace

std::optional<std::uint64_t> endsFingerprint(const RegularFile &file, ReadBuffer &buffer)
{
    const std::int64_t size = file.identity().size;
    const std::int64_t head = std::min(size, endSize);
    const std::int64_t tail = std::min(size - head, endSize);
    char *const bytes = buffer.at(0);
    if (!file.readAt(0, bytes, static_cast<std::size_t>(head)) ||
        !file.readAt(size - tail, bytes + head, static_cast<std::size_t>(tail)))
        return std::nullopt;
    return std::hash<std::string_view>()({bytes, static_cast<std::size_t>(head + tail)});
}

std::optional<std::string> sha256Of(const RegularFile &file, ReadBuffer &buffer, const OnRead &onRead)
{
    const Digest digest = beginSha256();
    if (!digest)
        return std::nullopt;
    file.expectWholeReading();
    char *const bytes = buffer.at(0);
    const bool isWhole = forEachChunk(file.identity().size, [&](std::int64_t offset, std::size_t size) {
        if (!file.readAt(offset, bytes, size))
            return false;
        gcry_md_write(digest.get(), bytes, size);
        return onRead(static_cast<std::int64_t>(size));
    });
    if (!isWhole || file.hasChanged())
        return std::nullopt;
    return std::string(reinterpret_cast<const char *>(gcry_md_read(digest.get(), GCRY_MD_SHA256)),
                       gcry_md_get_algo_dlen(GCRY_MD_SHA256));
}

bool haveSameBytes(const RegularFile &left, const RegularFile &right, ReadBuffer &buffer,
                   const OnRead &onRead)
{
    if (left.identity().size != right.identity().size)
        return false;
    left.expectWholeReading();
    right.expectWholeReading();
    char *const leftBytes = buffer.at(0);
    char *const rightBytes = buffer.at(ReadBuffer::largestChunk);
    const auto areSame = [&](std::int64_t offset, std::size_t size) {
        return left.readAt(offset, leftBytes, size) && right.readAt(offset, rightBytes, size) &&
               std::memcmp(leftBytes, rightBytes, size) == 0 && onRead(static_cast<std::int64_t>(2 * size));
    };
    return forEachChunk(left.identity().size, areSame) && !left.hasChanged() && !right.hasChanged();
}

} // namespace swabby
