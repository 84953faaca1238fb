#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace swabby {

/// What an application bundle says about itself.
struct BundleFacts {
    QString identifier;
    std::optional<QString> name; ///< the one for people, else the short one
};

/// From the bundle's Info.plist. No value when that is no property list with an identifier.
std::optional<BundleFacts> parseBundleFacts(const QByteArray &propertyList);

/// What the bundle's Info.plist calls its icon file, with or without ".icns". No value when it names none.
std::optional<QString> parseBundleIcon(const QByteArray &propertyList);

} // namespace swabby
