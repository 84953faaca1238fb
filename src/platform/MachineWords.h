#pragma once

#include <QtCore/QString>

#include <array>
#include <vector>

namespace swabby {

/// How a machine speaks of itself; a Mac's words unless it brings others. Every sentence that names the
/// computer or a part of its desktop takes the noun from here, or stands here whole where more differs.
struct MachineWords {
    QString computer = QStringLiteral("Mac");  ///< as in "your Mac"
    QString described = QStringLiteral("Mac"); ///< the same with what it runs, at the end of a sentence
    QString ofOneKind = QStringLiteral("a Mac");
    QString system = QStringLiteral("macOS");
    QString cacheFolder = QStringLiteral("~/Library/Caches");
    QString press = QStringLiteral("tap");                      ///< what a person does to a control
    QString pressFirst = QStringLiteral("Tap");                 ///< the same at the start of a sentence
    QString panel = QStringLiteral("menu bar");                 ///< where Swabby's item stands
    QString slowedBy = QStringLiteral("macOS");                 ///< who slows down what runs too hot
    QString batteryAdvice = QStringLiteral("Apple recommends"); ///< ... having a worn battery replaced
    QString reveal = QStringLiteral("Reveal in Finder");
    QString loginItemSettings = QStringLiteral("Open Startup Items in System Settings");
    QString buildCache = QStringLiteral("Xcode DerivedData");
    QString developerClutter = QStringLiteral("Xcode caches, old Simulator runtimes, and Docker storage.");
    QString isTheSystems = QStringLiteral("It is Apple-signed."); ///< a startup item's program
    QString isNotTheSystems = QStringLiteral("It is not signed by Apple.");
    int processors = 0;            ///< that a program's load is said of; 0 where it is one of the computer
    bool programsLikeDisks = true; ///< a program's memory is counted in powers of 1000, as a disk's bytes are
    QString systemWideItems = QStringLiteral("System-wide items are changed in the system's own settings.");
    QString whereTheRestIsTurnedOff = QStringLiteral("the system's own settings");
    /// What it says of each permission that is missing, in their order, and the button that opens where it is
    /// given; empty where nothing has to be allowed.
    struct Asking {
        QString refusal;
        QString button;
    };
    std::vector<Asking> permissions = macPermissions();
    static std::vector<Asking> macPermissions();
    QString packagedPrograms; ///< who removes what the system's packages brought; empty where nothing did
    std::array<QString, 2> nameMarks; ///< around each name; empty for none
    QString aboutMarks;               ///< what they mean, at the end of an instruction

    /// A name of anybody's making as it stands in a question to the model: one line of at most so many
    /// characters between the marks.
    QString marked(const QString &name, qsizetype most = 200) const;
    /// What the model wrote, without the marks.
    QString unmarked(QString name) const;
};

/// What a path may take in a question.
inline constexpr qsizetype longestPath = 1'000;

} // namespace swabby
