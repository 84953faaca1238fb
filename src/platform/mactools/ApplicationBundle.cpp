#include "platform/mactools/ApplicationBundle.h"

#include "platform/mactools/PropertyList.h"

namespace swabby {

std::optional<BundleFacts> parseBundleFacts(const QByteArray &propertyList)
{
    const PlistNode top = plistDictionary(propertyList);
    if (!top)
        return std::nullopt;
    const auto text = [&](const char *key) { return plistText(plist_dict_get_item(top.get(), key)); };
    const std::optional<QString> identifier = text("CFBundleIdentifier");
    if (!identifier || identifier->isEmpty())
        return std::nullopt;
    BundleFacts facts = {.identifier = *identifier, .name = text("CFBundleDisplayName")};
    if (!facts.name)
        facts.name = text("CFBundleName");
    return facts;
}

std::optional<QString> parseBundleIcon(const QByteArray &propertyList)
{
    const PlistNode top = plistDictionary(propertyList);
    return top ? plistText(plist_dict_get_item(top.get(), "CFBundleIconFile")) : std::nullopt;
}

} // namespace swabby
