#pragma once

#include "cleanup/DeveloperToolText.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

namespace swabby {

/// How much of one kind of thing the container engine can do without.
struct DockerRowText {
    Q_GADGET
    QML_VALUE_TYPE(dockerRowText)
    Q_PROPERTY(QString kind MEMBER kind)
    Q_PROPERTY(QString size MEMBER size)
    Q_PROPERTY(double fraction MEMBER fraction)

public:
    QString kind;
    QString size;
    double fraction = 0; ///< of all that can go, 0–1

    bool operator==(const DockerRowText &) const = default;
};

QList<DockerRowText> dockerRowTexts(const std::vector<DockerRow> &rows);

/// What the figure of the container engine counts and its removal leaves; empty where there is no such thing.
QString dockerNoteText(const std::vector<DockerRow> &rows);

} // namespace swabby
