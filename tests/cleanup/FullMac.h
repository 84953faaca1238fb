#pragma once

#include "cleanup/Clutter.h"
#include "state/AppState.h"

namespace swabby {

/// A described Mac with something for every engine, once each except for two unknown caches.
class FullMac : public ClutterScene {
public:
    explicit FullMac(const QJsonObject &facts = {}) : ClutterScene(u"cleanup/full_mac.txt"_qs, facts) {}

    QStringList allIds() const { return QString(expected).replace(u"~"_qs, home()).split(u'\n'); }
    bool has(const QString &below) const { return QFile::exists(home() + u'/' + below); }
};

} // namespace swabby
