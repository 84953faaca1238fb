#pragma once

#include <QtCore/QJsonObject>
#include <QtGui/QWindow>

namespace swabby {

class AppState;

/// Lets windows open where and as large as they were last, and remembers where they go. What cannot be read
/// or stored is forgotten. Main thread.
class WindowPlaces {
public:
    /// Reads what was kept, from a small file.
    explicit WindowPlaces(AppState &state);

    /// Puts a window that was made and not shown yet where the last one of that name was, and follows it.
    void follow(QWindow &window, const QString &name);

private:
    void keep(const QString &name, const QJsonObject &place);

    AppState &m_state;
    const QString m_file;
    QJsonObject m_kept;
};

} // namespace swabby
