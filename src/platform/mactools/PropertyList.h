#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <plist/plist.h>

#include <memory>
#include <optional>

namespace swabby {

/// A property list takes a few kilobytes. What is nested as deeply as a larger file can hold would exhaust
/// the stack of whoever reads it.
inline constexpr qsizetype largestPropertyList = 128 * 1024;

struct PlistRelease {
    void operator()(void *node) const { plist_free(node); }
};
using PlistNode = std::unique_ptr<void, PlistRelease>;

/// No node for bytes that are no property list (XML or binary) with a dictionary at the top, or too many.
PlistNode plistDictionary(const QByteArray &propertyList);

/// No value for a node that is none or no text.
std::optional<QString> plistText(plist_t node);

} // namespace swabby
