#pragma once

#include <QtCore/QString>

namespace swabby {

/// Where things lie on the machine looked after. Absolute paths without a trailing slash.
struct Places {
    QString home;            ///< the user's home folder
    QString root;            ///< what stands for "/": empty on a real machine, a folder on a described one
    QString applicationData; ///< Swabby's own data folder; may not exist yet; empty when it can have none
    QString preferences;     ///< the folder of the settings file; may not exist yet
    QString windowPlaces;    ///< the file with where the windows stood; empty where that is not kept
    quint32 userId = 0;      ///< the user's numeric id
};

} // namespace swabby
