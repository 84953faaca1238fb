#pragma once

#include <QtCore/QObject>
#include <QtDBus/QDBusVariant>
#include <QtGui/QColor>

#include <optional>

namespace swabby {

/// What the desktop says about light or dark, its accent and motion, and when it says something else. Where
/// there is no settings portal the palette decides and everything may move.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    explicit DesktopAppearance(QObject *parent = nullptr);

    bool isDark() const;
    bool reducesMotion() const { return m_reducesMotion; }
    /// None where the desktop has no accent colour of its own.
    const std::optional<QColor> &accent() const { return m_accent; }

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void settingChanged(const QString &space, const QString &key, const QDBusVariant &value);

private:
    void ask(const QString &space, const QString &key);
    void take(const QString &space, const QString &key, const QVariant &value);

    std::optional<bool> m_prefersDark;
    std::optional<QColor> m_accent;
    bool m_reducesMotion = false;
};

} // namespace swabby
