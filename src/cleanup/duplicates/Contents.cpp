#include "cleanup/duplicates/Contents.h"

#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <string_view>

namespace swabby {
namespace {

constexpr auto chunkSize = static_cast<std::int64_t>(ReadBuffer::largestChunk);

struct FreeDigest {
    void operator()(EVP_MD_CTX *digest) const { EVP_MD_CTX_free(digest); }
};

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
    const std::unique_ptr<EVP_MD_CTX, FreeDigest> digest(EVP_MD_CTX_new());
    if (!digest || EVP_DigestInit_ex(digest.get(), EVP_sha256(), nullptr) != 1)
        return std::nullopt;
    file.expectWholeReading();
    char *const bytes = buffer.at(0);
    const bool isWhole = forEachChunk(file.identity().size, [&](std::int64_t offset, std::size_t size) {
        return file.readAt(offset, bytes, size) && EVP_DigestUpdate(digest.get(), bytes, size) == 1 &&
               onRead(static_cast<std::int64_t>(size));
    });
    std::array<unsigned char, EVP_MAX_MD_SIZE> result;
    unsigned int length = 0;
    if (!isWhole || EVP_DigestFinal_ex(digest.get(), result.data(), &length) != 1 || file.hasChanged())
        return std::nullopt;
    return std::string(result.begin(), result.begin() + length);
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
