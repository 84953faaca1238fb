#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <utility>
#include <vector>

namespace swabby {

/// A property list of these texts. What XML cannot hold is left out.
QByteArray propertyList(const std::vector<std::pair<QString, QString>> &texts);

} // namespace swabby
