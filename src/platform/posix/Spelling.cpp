#include "platform/posix/Spelling.h"

#include "platform/FileIdentity.h"

#include <QtCore/QString>

namespace swabby {
namespace {

QString otherCase(QString name)
{
    for (QChar &letter : name)
        letter = letter.isUpper() ? letter.toLower() : letter.toUpper();
    return name;
}

} // namespace

bool hasOtherSpelling(const std::filesystem::path &path)
{
    std::filesystem::path above;
    for (const std::filesystem::path &part : path) {
        if (!FileIdentity::of(above / part))
            return false;
        const QString name = QString::fromStdString(part.native());
        for (const QString &other : {otherCase(name), name.normalized(QString::NormalizationForm_C),
                                     name.normalized(QString::NormalizationForm_D)})
            if (other != name && FileIdentity::of(above / other.toStdString()))
                return true;
        above /= part;
    }
    return false;
}

std::filesystem::path folded(const std::filesystem::path &path)
{
    const QString text = QString::fromStdString(path.native()).normalized(QString::NormalizationForm_D);
    return text.toCaseFolded().normalized(QString::NormalizationForm_C).toStdString();
}

} // namespace swabby
