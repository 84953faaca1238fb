#include "platform/mactools/PropertyList.h"

#include "platform/mactools/SharedObjects.h"

#include <type_traits>

namespace swabby {
namespace {

// A fourth argument, the format found, came with libplist 2.3.
template <typename Read>
plist_t parsedBy(Read *read, const QByteArray &text)
{
    plist_t parsed = nullptr;
    const auto length = static_cast<std::uint32_t>(text.size());
    if constexpr (std::is_invocable_v<Read *, const char *, std::uint32_t, plist_t *>)
        read(text.constData(), length, &parsed);
    else
        read(text.constData(), length, &parsed, nullptr);
    return parsed;
}

} // namespace

PlistNode plistDictionary(const QByteArray &propertyList)
{
    if (propertyList.isEmpty() || propertyList.size() > largestPropertyList ||
        !staysSmallWrittenOut(propertyList))
        return nullptr;
    PlistNode top(parsedBy(plist_from_memory, propertyList));
    if (!top || plist_get_node_type(top.get()) != PLIST_DICT)
        return nullptr;
    return top;
}

std::optional<QString> plistText(plist_t node)
{
    if (!node || plist_get_node_type(node) != PLIST_STRING)
        return std::nullopt;
    std::uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    return text ? QString::fromUtf8(text, static_cast<qsizetype>(length)) : QString();
}

} // namespace swabby
