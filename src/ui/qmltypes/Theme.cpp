#include "ui/qmltypes/Theme.h"

#include <QtCore/QEvent>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <QtGui/QScreen>
#include <QtGui/QStyleHints>
#include <QtQml/QQmlEngine>

#include <utility>

namespace swabby {
namespace {

// The desktop's font where it names one. "Sans Serif" is what Qt says when it does not, and without a
// display there is no desktop at all.
QString familyOfInterface()
{
    static const QString family = [] {
        const QString inter = QStringLiteral("Inter");
        const QString named = QGuiApplication::font().family();
        const bool isUnnamed = named.isEmpty() || named.startsWith(QLatin1String("Sans")) ||
                               QGuiApplication::platformName() == QLatin1String("offscreen");
        return isUnnamed && QFontDatabase::hasFamily(inter) ? inter : named;
    }();
    return family;
}

double pointsPerPixel()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? 0.75 : 72 / screen->logicalDotsPerInchY();
}

} // namespace

Theme::Theme(ThemeChoice choice, QObject *parent)
    : QObject(parent), m_choice(choice), m_desktop(makeDesktopAppearance())
{
    choose();
    qGuiApp->installEventFilter(this);
    connect(m_desktop.get(), &DesktopAppearance::changed, this, &Theme::follow);
}

bool Theme::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp)
        follow();
    return QObject::eventFilter(watched, event);
}

void Theme::follow()
{
    choose();
    Q_EMIT changed();
}

void Theme::choose()
{
    ThemeColors &colors = *this;
    colors = isDark() ? darkColors() : lightColors();
    if (const auto &chosen = m_desktop->now().accent)
        colors = withAccent(colors, *chosen);
}

Theme *Theme::create(QQmlEngine *engine, QJSEngine *)
{
    auto *theme = engine->findChild<Theme *>(QString(), Qt::FindDirectChildrenOnly);
    if (theme == nullptr)
        theme = new Theme(ThemeChoice::system, engine);
    QJSEngine::setObjectOwnership(theme, QJSEngine::CppOwnership);
    return theme;
}

bool Theme::isDark() const
{
    if (m_choice != ThemeChoice::system)
        return m_choice == ThemeChoice::dark;
    // Where the desktop says nothing, the toolkit's palette is all there is to go by.
    return m_desktop->now().prefersDark.value_or(
        QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F);
}

int Theme::doubleClickTime() const
{
    return QGuiApplication::styleHints()->mouseDoubleClickInterval();
}

bool Theme::moves() const
{
    return !m_isStill && !m_desktop->now().reducesMotion;
}

void Theme::setStill(bool isStill)
{
    m_isStill = isStill;
    Q_EMIT changed();
}

void Theme::setChoice(ThemeChoice choice)
{
    if (std::exchange(m_choice, choice) != choice)
        follow();
}

QFont Theme::font(double pixels, QFont::Weight weight)
{
    QFont font(familyOfInterface());
    // Sizes in pixels are whole numbers; the type scale has halves.
    font.setPointSizeF(pixels * pointsPerPixel());
    font.setWeight(weight);
    return font;
}

} // namespace swabby
