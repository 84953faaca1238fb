#include "platform/machinefolder/RecordedAnswers.h"

#include "platform/Utf8.h"
#include "platform/machinefolder/OwnFiles.h"
#include "platform/posix/SmallFile.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <algorithm>

namespace swabby {
namespace {

constexpr std::int64_t largestFile = 32 << 20;

const QString runKey = QStringLiteral("run");
const QString saidKey = QStringLiteral("said");
const QString bytesKey = QStringLiteral("base64");

std::string replaced(std::string text, const std::string &from, const std::string &to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

/// File names are bytes; those that are no text, or begin with the mark that a text loses, stand there in
/// Base64.
QJsonValue valueOf(const std::string &bytes)
{
    if (const QString text = textOf(bytes); text.toStdString() == bytes)
        return text;
    return QJsonObject{{bytesKey, QString::fromLatin1(QByteArray::fromStdString(bytes).toBase64())}};
}

std::string bytesOf(const QJsonValue &value)
{
    return value.isObject() ? QByteArray::fromBase64(value[bytesKey].toString().toLatin1()).toStdString()
                            : value.toString().toStdString();
}

QJsonArray arrayOf(const std::vector<std::string> &texts)
{
    QJsonArray array;
    for (const std::string &text : texts)
        array.append(valueOf(text));
    return array;
}

std::vector<std::string> textsIn(const QJsonArray &array)
{
    std::vector<std::string> texts;
    for (const QJsonValue &value : array)
        texts.push_back(bytesOf(value));
    return texts;
}

QByteArray contentOf(const QString &path)
{
    return isOwnFile(path) ? smallFile(QFile::encodeName(path).toStdString(), largestFile) : QByteArray();
}

std::vector<std::string> wordsOf(const std::string &executable, const std::vector<std::string> &arguments)
{
    std::vector<std::string> words = {executable};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

} // namespace

RecordedAnswers::RecordedAnswers(const QString &folder)
    : RecordedAnswers(QFile::encodeName(folder).toStdString(),
                      contentOf(folder + QStringLiteral("/answers.json")))
{
}

RecordedAnswers::RecordedAnswers(std::string folder, const QByteArray &content) : m_folder(std::move(folder))
{
    for (const QJsonValue &answer : QJsonDocument::fromJson(content).array())
        m_texts[textsIn(answer[runKey].toArray())] = {textsIn(answer[saidKey].toArray())};
}

bool RecordedAnswers::knows(const std::string &executable) const
{
    return std::ranges::any_of(m_texts, [&](const auto &answer) {
        return !answer.first.empty() && answer.first.front() == executable;
    });
}

std::optional<std::string> RecordedAnswers::next(const std::string &executable,
                                                 const std::vector<std::string> &arguments)
{
    Words words = wordsOf(executable, arguments);
    for (std::string &word : words)
        if (word == m_folder || word.starts_with(m_folder + '/'))
            word.replace(0, m_folder.size(), folderMark);
    const std::scoped_lock guard(m_mutex);
    const auto found = m_texts.find(words);
    if (found == m_texts.end() || found->second.all.empty())
        return std::nullopt;
    Texts &texts = found->second;
    const std::string &text = texts.all[texts.next];
    texts.next = std::min(texts.next + 1, texts.all.size() - 1);
    return replaced(text, folderMark, m_folder);
}

QByteArray RecordedAnswers::file(const std::vector<ToolRun> &runs)
{
    std::map<Words, Texts> texts;
    for (const ToolRun &run : runs)
        if (run.text)
            texts[wordsOf(run.executable, run.arguments)].all.push_back(*run.text);
    QJsonArray answers;
    for (const auto &[words, said] : texts)
        answers.append(QJsonObject{{runKey, arrayOf(words)}, {saidKey, arrayOf(said.all)}});
    return QJsonDocument(answers).toJson();
}

} // namespace swabby
