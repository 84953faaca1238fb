#include "platform/posix/ForeignHome.h"

#include <QtCore/QFile>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace swabby {

QString foreignHome(const Places &places)
{
    if (::geteuid() != 0)
        return {};
    for (const QString &folder :
         {places.home, places.preferences, places.applicationData, places.windowPlaces}) {
        // What is not there yet would be made in what is.
        std::filesystem::path there = QFile::encodeName(folder).toStdString();
        struct stat facts = {};
        while (::stat(there.c_str(), &facts) != 0 && there.has_relative_path())
            there = there.parent_path();
        if (facts.st_uid != 0)
            return QStringLiteral(
                       "%1 is another person's: run this as that person, since what root stores or "
                       "removes there they cannot undo")
                .arg(folder);
    }
    return {};
}

} // namespace swabby
