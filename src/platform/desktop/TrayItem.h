#pragma once

#include <QtCore/QObject>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <functional>
#include <memory>
#include <vector>

namespace swabby {

/// What the item's own menu leads to.
enum class TrayCommand { openMainWindow, openAskWindow, openSettingsWindow, refresh, quit };

/// What the item shows: a square that is drawn in the sizes its panel wants, or in a menu bar a title as wide
/// as it needs, and words for the pointer above it.
struct TrayPicture {
    std::function<QImage(int side)> draw = {};
    QString tip = {};
    std::function<QImage(double devicePixelRatio)> drawTitle = {};
};

/// One way to stand in the desktop's panel. It notices by itself when a panel comes up, goes or is replaced,
/// and shows the picture again. Nothing here waits for the panel.
class TrayItem : public QObject {
    Q_OBJECT

public:
    enum class Place { unknown, none, there };

    /// Whether a panel shows such items now; unknown for the first moments at most.
    virtual Place place() const = 0;
    /// Shows the picture from now on, as soon as there is a place.
    virtual void show(const TrayPicture &picture) = 0;
    /// Takes the item out of the panel where that is possible.
    virtual void hide() = 0;

Q_SIGNALS:
    void placeChanged();
    /// A click on the item, which stands there on the screen; empty when that is unknown.
    void activated(const QRect &where);
    /// A click that asks for the menu, where the panel shows none itself.
    void menuWanted(const QRect &where);
    /// A choice from the menu that the panel showed.
    void commanded(swabby::TrayCommand command);
};

using TrayItems = std::vector<std::unique_ptr<TrayItem>>;

/// Every way that this system knows, the preferred one first; none without a desktop.
TrayItems makeTrayItems();

} // namespace swabby
