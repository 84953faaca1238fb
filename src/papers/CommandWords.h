#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace swabby {

/// An option as its program tells of it.
struct OptionWords {
    QString name;
    QString value; ///< what stands for its value; empty for a switch
    QString does;
    QStringList takes; ///< every value, where those are words

    bool isFolder() const { return value == QLatin1String("DIR") || value == QLatin1String("OUT"); }
};

/// A verb of a program that has verbs.
struct VerbWords {
    QString usage; ///< its name, then its operands and its own options
    QString does;
    QStringList options;  ///< by name, its own and every verb's
    QStringList operands; ///< what its first operand may be, where that is a word

    QString name() const { return usage.section(QLatin1Char(' '), 0, 0); }
    bool takesFolders() const { return usage.contains(QLatin1String("[DIR")); }
};

/// What a program can be told on the command line.
struct CommandWords {
    QString name;
    QString summary; ///< one line without a full stop
    QString usage;
    QList<OptionWords> options;
    QList<VerbWords> verbs;
};

} // namespace swabby
