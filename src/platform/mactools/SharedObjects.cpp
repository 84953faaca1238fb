#include "platform/mactools/SharedObjects.h"

#include <QtCore/QByteArrayView>

#include <cstdint>
#include <optional>
#include <vector>

namespace swabby {
namespace {

constexpr std::uint64_t mostObjects = 20'000; // reading so many takes about 20 ms
constexpr int deepest = 100;
constexpr qsizetype trailerLength = 32;

/// A number of so many bytes, the highest first.
std::optional<std::uint64_t> numberAt(QByteArrayView bytes, std::uint64_t at, std::uint64_t width)
{
    const auto size = static_cast<std::uint64_t>(bytes.size());
    if (width == 0 || width > 8 || at > size || width > size - at)
        return std::nullopt;
    std::uint64_t number = 0;
    for (const char byte : bytes.sliced(static_cast<qsizetype>(at), static_cast<qsizetype>(width)))
        number = number << 8 | static_cast<unsigned char>(byte);
    return number;
}

/// The objects of a binary property list, each counted with all that it names.
class ObjectCount {
public:
    explicit ObjectCount(QByteArrayView bytes) : m_bytes(bytes)
    {
        const auto trailer = static_cast<std::uint64_t>(bytes.size() - trailerLength);
        m_offsetWidth = *numberAt(bytes, trailer + 6, 1);
        m_referenceWidth = *numberAt(bytes, trailer + 7, 1);
        m_top = *numberAt(bytes, trailer + 16, 8);
        m_offsets = *numberAt(bytes, trailer + 24, 8);
        const std::uint64_t objects = *numberAt(bytes, trailer + 8, 8);
        if (objects <= static_cast<std::uint64_t>(bytes.size()))
            m_counted.resize(objects);
    }

    std::optional<std::uint64_t> ofTop() { return of(m_top, 0); }

private:
    struct Container {
        std::uint64_t references = 0; ///< where the first stands
        std::uint64_t size = 0;
    };

    /// Empty for an object that names no others.
    std::optional<Container> containerAt(std::uint64_t at, unsigned marker) const
    {
        constexpr unsigned array = 0xA;
        constexpr unsigned dictionary = 0xD;
        constexpr unsigned longSize = 0xF;
        if (marker >> 4 < array || marker >> 4 > dictionary)
            return Container{};
        Container found = {.references = at + 1, .size = marker & 0xFU};
        if (found.size == longSize) {
            const auto width = numberAt(m_bytes, at + 1, 1);
            const auto size = width ? numberAt(m_bytes, at + 2, 1ULL << (*width & 0xFU)) : std::nullopt;
            if (!size)
                return std::nullopt;
            found = {.references = at + 2 + (1ULL << (*width & 0xFU)), .size = *size};
        }
        if (found.size > mostObjects)
            return std::nullopt;
        if (marker >> 4 == dictionary)
            found.size *= 2;
        return found;
    }

    std::optional<std::uint64_t> of(std::uint64_t object, int depth)
    {
        if (depth == deepest || object >= m_counted.size())
            return std::nullopt;
        if (m_counted[object] > 0)
            return m_counted[object];
        const auto at = numberAt(m_bytes, m_offsets + object * m_offsetWidth, m_offsetWidth);
        const auto marker = at ? numberAt(m_bytes, *at, 1) : std::nullopt;
        const auto container = marker ? containerAt(*at, static_cast<unsigned>(*marker)) : std::nullopt;
        if (!container)
            return std::nullopt;
        std::uint64_t count = 1;
        for (std::uint64_t index = 0; index < container->size; ++index) {
            const auto named =
                numberAt(m_bytes, container->references + index * m_referenceWidth, m_referenceWidth);
            const auto more = named ? of(*named, depth + 1) : std::nullopt;
            if (!more || count + *more > mostObjects)
                return std::nullopt;
            count += *more;
        }
        return m_counted[object] = static_cast<std::uint32_t>(count);
    }

    QByteArrayView m_bytes;
    std::uint64_t m_offsetWidth = 0;
    std::uint64_t m_referenceWidth = 0;
    std::uint64_t m_top = 0;
    std::uint64_t m_offsets = 0;
    std::vector<std::uint32_t> m_counted; ///< by object; 0 for what has not been counted
};

} // namespace

bool staysSmallWrittenOut(const QByteArray &propertyList)
{
    constexpr QByteArrayView magic("bplist");
    if (!propertyList.startsWith(magic))
        return true;
    return propertyList.size() > trailerLength && ObjectCount(propertyList).ofTop().has_value();
}

} // namespace swabby
