#pragma once

#include "platform/MachineFolder.h"
#include "platform/Shell.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <map>
#include <mutex>

namespace swabby {

/// What tools said when a machine folder was recorded, in its answers.json: data, which stand for the tools
/// without anything being run. Safe to ask from several threads.
class RecordedAnswers {
public:
    /// None where there is no such file, or one that is larger than any recording or no regular file.
    explicit RecordedAnswers(const QString &folder);
    /// Those of such a file's content.
    RecordedAnswers(std::string folder, const QByteArray &content);

    bool knows(const std::string &executable) const;
    /// What the tool said to exactly this, one after the other, the last for good. No value when it was never
    /// asked that.
    std::optional<std::string> next(const std::string &executable, const std::vector<std::string> &arguments);

    /// The file of these runs, with the mark where they name the folder. Those without a text are left out.
    static QByteArray file(const std::vector<ToolRun> &runs);

private:
    using Words = std::vector<std::string>; ///< the executable, then its arguments

    struct Texts {
        std::vector<std::string> all;
        std::size_t next = 0;
    };

    const std::string m_folder;
    std::mutex m_mutex;
    std::map<Words, Texts> m_texts;
};

} // namespace swabby
