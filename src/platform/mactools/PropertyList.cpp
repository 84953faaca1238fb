#include "platform/mactools/PropertyList.h"

namespace swabby {

PlistNode plistDictionary(const QByteArray &propertyList)
{
    if (propertyList.isEmpty() || propertyList.size() > largestPropertyList)
        return nullptr;
    plist_t parsed = nullptr;
    plist_from_memory(propertyList.constData(), static_cast<std::uint32_t>(propertyList.size()), &parsed);
    PlistNode top(parsed);
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
