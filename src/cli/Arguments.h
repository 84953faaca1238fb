#pragma once

#include "papers/CommandWords.h"

#include <QtCore/QStringList>

#include <optional>
#include <variant>

namespace swabby {

struct Verb;

/// What somebody asked swabbyctl for.
struct Arguments {
    QString verb;
    const Verb *row = nullptr; ///< the verb's, in the table of them
    QStringList operands;      ///< what follows the verb
    std::optional<QString> machineFolder;
    bool runTools = false; ///< those of the machine folder
    bool json = false;
    bool unset = false;
    std::optional<int> refreshes; ///< lines that watch prints; absent: no end
    double interval = 60;         ///< seconds between watch's refreshes
    std::optional<double> snooze; ///< seconds
    std::optional<std::int32_t> pid;
    std::optional<QString> item; ///< id of a startup item
    bool yes = false;            ///< agrees to the question
    bool force = false;
    bool unknown = false;   ///< caches that no table knows
    bool vet = false;       ///< the same, looked over by the assistant
    bool withNames = false; ///< those that people and makers chose, in a recording
};

/// One line: what is wrong and what is right.
struct WrongUsage {
    QString text;
};

/// Something to print before ending well: help or the version.
struct Information {
    QString text;
};

/// What swabbyctl can be told, for its papers.
CommandWords terminalWords();

std::variant<Arguments, WrongUsage, Information> parseArguments(const QStringList &commandLine);

} // namespace swabby
