#pragma once

#include "platform/desktop/DesktopAppearance.h"
#include "ui/presentation/LineBreaks.h"
#include "ui/presentation/ThemeColors.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtGui/QFont>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace swabby {

/// The colours in force, and the fonts and durations of every view.
class Theme : public QObject, public ThemeColors {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(QColor window MEMBER window NOTIFY changed)
    Q_PROPERTY(QColor sidebar MEMBER sidebar NOTIFY changed)
    Q_PROPERTY(QColor card MEMBER card NOTIFY changed)
    Q_PROPERTY(QColor hairline MEMBER hairline NOTIFY changed)
    Q_PROPERTY(QColor quietFill MEMBER quietFill NOTIFY changed)
    Q_PROPERTY(QColor hoverFill MEMBER hoverFill NOTIFY changed)
    Q_PROPERTY(QColor primary MEMBER primary NOTIFY changed)
    Q_PROPERTY(QColor secondary MEMBER secondary NOTIFY changed)
    Q_PROPERTY(QColor tertiary MEMBER tertiary NOTIFY changed)
    Q_PROPERTY(QColor accent MEMBER accent NOTIFY changed)
    Q_PROPERTY(QColor accentFill MEMBER accentFill NOTIFY changed)
    Q_PROPERTY(QColor dangerFill MEMBER dangerFill NOTIFY changed)
    Q_PROPERTY(QColor onAccent MEMBER onAccent NOTIFY changed)
    Q_PROPERTY(QColor cardEdge MEMBER cardEdge NOTIFY changed)
    Q_PROPERTY(QColor shadow MEMBER shadow NOTIFY changed)
    Q_PROPERTY(QColor scrim MEMBER scrim NOTIFY changed)
    Q_PROPERTY(QColor trustStar MEMBER trustStar NOTIFY changed)
    Q_PROPERTY(QList<QColor> marks MEMBER marks NOTIFY changed)
    Q_PROPERTY(QList<QColor> inks MEMBER inks NOTIFY changed)
    Q_PROPERTY(QList<QColor> washes MEMBER washes NOTIFY changed)
    Q_PROPERTY(QList<QColor> tiles READ tiles CONSTANT)
    Q_PROPERTY(QFont resultFont READ resultFont CONSTANT)
    Q_PROPERTY(QFont figureFont READ figureFont CONSTANT)
    Q_PROPERTY(QFont titleFont READ titleFont CONSTANT)
    Q_PROPERTY(QFont headingFont READ headingFont CONSTANT)
    Q_PROPERTY(QFont bodyFont READ bodyFont CONSTANT)
    Q_PROPERTY(QFont subtitleFont READ subtitleFont CONSTANT)
    Q_PROPERTY(QFont buttonFont READ buttonFont CONSTANT)
    Q_PROPERTY(QFont smallFont READ smallFont CONSTANT)
    Q_PROPERTY(QFont smallHeadingFont READ smallHeadingFont CONSTANT)
    Q_PROPERTY(QFont bannerFont READ bannerFont CONSTANT)
    Q_PROPERTY(QFont nameFont READ nameFont CONSTANT)
    Q_PROPERTY(QFont chipFont READ chipFont CONSTANT)
    Q_PROPERTY(QFont hintFont READ hintFont CONSTANT)
    Q_PROPERTY(QFont axisFont READ axisFont CONSTANT)
    Q_PROPERTY(double columnWidth READ columnWidth CONSTANT)
    Q_PROPERTY(int doubleClickTime READ doubleClickTime CONSTANT)
    Q_PROPERTY(int foldDuration READ foldDuration NOTIFY changed)
    Q_PROPERTY(int sheetDuration READ sheetDuration NOTIFY changed)
    Q_PROPERTY(bool moves READ moves NOTIFY changed)
    Q_PROPERTY(bool isStill READ isStill NOTIFY changed)

public:
    explicit Theme(ThemeChoice choice, QObject *parent = nullptr);
    /// The theme that was made a child of the engine, else one that follows the desktop.
    static Theme *create(QQmlEngine *engine, QJSEngine *);

    bool isDark() const;
    /// Whether anything may move at all.
    bool moves() const;
    /// Whether everything is to be there at once, for a picture.
    bool isStill() const { return m_isStill; }
    void setStill(bool isStill);
    void setChoice(ThemeChoice choice);

    /// Hears when the desktop's palette changes.
    bool eventFilter(QObject *watched, QEvent *event) override;

    QList<QColor> tiles() const { return tileColors(); }

    QFont resultFont() const { return font(22, QFont::DemiBold); }
    QFont figureFont() const { return font(19, QFont::DemiBold); }
    QFont titleFont() const { return font(15, QFont::Bold); }
    QFont headingFont() const { return font(13, QFont::DemiBold); }
    QFont bodyFont() const { return font(13, QFont::Normal); }
    QFont subtitleFont() const { return font(12.5, QFont::Normal); }
    QFont buttonFont() const { return font(12.5, QFont::Medium); }
    QFont smallFont() const { return font(12, QFont::Normal); }
    QFont smallHeadingFont() const { return font(11, QFont::DemiBold); }
    QFont bannerFont() const { return font(11.5, QFont::Medium); }
    QFont nameFont() const { return font(14, QFont::DemiBold); }
    QFont chipFont() const { return font(12, QFont::DemiBold); }
    QFont hintFont() const { return font(11, QFont::Normal); }
    QFont axisFont() const { return font(10.5, QFont::Normal); }

    /// What a paragraph of that width leaves free at its side: see LineBreaks.h.
    Q_INVOKABLE static double roomForLastLine(const QString &text, const QFont &font, double width)
    {
        return swabby::roomForLastLine(text, font, width);
    }

    /// The widest a page's column gets: across more, a row's end is hard to tell to its beginning.
    static double columnWidth() { return 960; }

    /// The desktop's, in milliseconds.
    int doubleClickTime() const;
    int foldDuration() const { return moves() ? 150 : 0; }
    int sheetDuration() const { return moves() ? 200 : 0; }

Q_SIGNALS:
    void changed();

private:
    void follow();
    void choose();
    static QFont font(double pixels, QFont::Weight weight);

    ThemeChoice m_choice;
    bool m_isStill = false;
    std::unique_ptr<DesktopAppearance> m_desktop;
};

} // namespace swabby
