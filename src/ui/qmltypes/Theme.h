#pragma once

#include "platform/desktop/DesktopAppearance.h"
#include "ui/presentation/ThemeColors.h"
#include "ui/qmltypes/WindowContext.h"

#include <QtCore/QObject>
#include <QtGui/QFont>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace swabby {

/// The colours, fonts and durations of every view.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor sidebar READ sidebar NOTIFY changed)
    Q_PROPERTY(QColor card READ card NOTIFY changed)
    Q_PROPERTY(QColor hairline READ hairline NOTIFY changed)
    Q_PROPERTY(QColor quietFill READ quietFill NOTIFY changed)
    Q_PROPERTY(QColor hoverFill READ hoverFill NOTIFY changed)
    Q_PROPERTY(QColor primary READ primary NOTIFY changed)
    Q_PROPERTY(QColor secondary READ secondary NOTIFY changed)
    Q_PROPERTY(QColor tertiary READ tertiary NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentFill READ accentFill NOTIFY changed)
    Q_PROPERTY(QColor dangerFill READ dangerFill NOTIFY changed)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY changed)
    Q_PROPERTY(QColor cardEdge READ cardEdge NOTIFY changed)
    Q_PROPERTY(QColor shadow READ shadow NOTIFY changed)
    Q_PROPERTY(QColor scrim READ scrim NOTIFY changed)
    Q_PROPERTY(QColor trustStar READ trustStar NOTIFY changed)
    Q_PROPERTY(QList<QColor> marks READ marks NOTIFY changed)
    Q_PROPERTY(QList<QColor> inks READ inks NOTIFY changed)
    Q_PROPERTY(QList<QColor> washes READ washes NOTIFY changed)
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
    Q_PROPERTY(int foldDuration READ foldDuration NOTIFY changed)
    Q_PROPERTY(int sheetDuration READ sheetDuration NOTIFY changed)
    Q_PROPERTY(bool moves READ moves NOTIFY changed)

public:
    explicit Theme(ThemeChoice choice, QObject *parent = nullptr);
    /// The theme that was made a child of the engine, else one that follows the desktop.
    static Theme *create(QQmlEngine *engine, QJSEngine *);

    bool isDark() const;
    /// Whether anything may move at all.
    bool moves() const;
    void setStill(bool isStill);

    /// Hears when the desktop's palette changes.
    bool eventFilter(QObject *watched, QEvent *event) override;

    QColor window() const { return colors().window; }
    QColor sidebar() const { return colors().sidebar; }
    QColor card() const { return colors().card; }
    QColor hairline() const { return colors().hairline; }
    QColor quietFill() const { return colors().quietFill; }
    QColor hoverFill() const { return colors().hoverFill; }
    QColor primary() const { return colors().primary; }
    QColor secondary() const { return colors().secondary; }
    QColor tertiary() const { return colors().tertiary; }
    QColor accent() const { return colors().accent; }
    QColor accentFill() const { return colors().accentFill; }
    QColor dangerFill() const { return colors().dangerFill; }
    QColor onAccent() const { return colors().onAccent; }
    QColor cardEdge() const { return colors().cardEdge; }
    QColor shadow() const { return colors().shadow; }
    QColor scrim() const { return colors().scrim; }
    QColor trustStar() const { return colors().trustStar; }
    QList<QColor> marks() const { return QList<QColor>(colors().marks.begin(), colors().marks.end()); }
    QList<QColor> inks() const { return QList<QColor>(colors().inks.begin(), colors().inks.end()); }
    QList<QColor> washes() const { return QList<QColor>(colors().washes.begin(), colors().washes.end()); }
    QList<QColor> tiles() const { return tileColors(); }

    QFont resultFont() const { return font(22, QFont::DemiBold); }
    QFont figureFont() const { return font(19, QFont::DemiBold); }
    QFont titleFont() const { return font(15, QFont::DemiBold); }
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

    int foldDuration() const { return moves() ? 150 : 0; }
    int sheetDuration() const { return moves() ? 200 : 0; }

Q_SIGNALS:
    void changed();

private:
    const ThemeColors &colors() const { return m_colors; }
    void follow();
    void choose();
    static QFont font(double pixels, QFont::Weight weight);

    ThemeChoice m_choice;
    bool m_isStill = false;
    std::unique_ptr<DesktopAppearance> m_desktop;
    ThemeColors m_colors;
};

} // namespace swabby
