#include "platform/macparts/DefaultsStore.h"
#include "platform/macparts/MacDisposal.h"
#include "platform/macparts/MacProcessControl.h"
#include "platform/macparts/OneQuestion.h"
#include "platform/macparts/ToolEnvironment.h"
#include "support/RandomTree.h"
#include "support/Table.h"

#include <QtCore/QDateTime>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>

using namespace swabby;

namespace fs = std::filesystem;

namespace {

/// Keeps the types of what is stored, as a Mac's defaults do.
const QSettings::Format typed = QSettings::registerFormat(
    u"typed"_qs,
    [](QIODevice &file, QSettings::SettingsMap &map) {
        QDataStream stream(&file);
        stream >> map;
        return stream.status() == QDataStream::Ok || stream.status() == QDataStream::ReadPastEnd;
    },
    [](QIODevice &file, const QSettings::SettingsMap &map) {
        QDataStream stream(&file);
        stream << map;
        return stream.status() == QDataStream::Ok;
    });

/// Answers every question for a process with what stands in its place.
struct Answering final : Shell {
    std::optional<std::string> perform(const std::string &, const std::vector<std::string> &, ToolOutput,
                                       const StopToken &) override
    {
        return answers.size() > 1 ? std::exchange(answers, {answers.begin() + 1, answers.end()}).front()
                                  : answers.front();
    }
    bool has(const std::string &) override { return true; }
    bool launch(const std::string &, const std::vector<std::string> &) override { return false; }

    std::vector<std::optional<std::string>> answers;
};

} // namespace

class MacPartsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatIsSwappedMeanwhile()
    {
        // What somebody does before the system moves and after it, and what came of it.
        compareTable(fixture(u"macparts/swapped_meanwhile.txt"_qs), [](const Cells &row) {
            const Ground ground;
            for (const char *name : {"home/folder/film", "home/other/film", "home/new"})
                writeBytes(ground / name, name);
            const auto step = [&](const QByteArray &steps) {
                for (const QByteArray &one : steps.split(','))
                    if (const auto words = one.trimmed().split(' '); words.size() == 2)
                        fs::rename(ground / words[0].toStdString(), ground / words[1].toStdString());
                    else if (words.size() == 3)
                        fs::create_directory_symlink(words[1].toStdString(), ground / words[2].toStdString());
            };
            Permissions permissions;
            const auto toTrash = [&](const fs::path &path) -> std::optional<fs::path> {
                if (row[0] == "refuses")
                    return std::nullopt;
                step(row[0]);
                fs::create_directories(ground / "trash");
                const fs::path place = ground / "trash" / (row[2] == "renamed" ? "film 2" : "film");
                fs::rename(path, place);
                step(row[1]);
                return place;
            };
            MacDisposal disposal(ground / "trash", toTrash, permissions);
            int told = 0;
            const auto item = disposal.moveToTrash(
                targetAt(ground / "home/folder/film", ground / "home"),
                [&](const TrashedItem &) { return row[2] != "untold" && ++told != row[3].toInt(); });
            QStringList found = {item ? QString::fromStdString(item->trashed.filename()) : u"stays"_qs};
            for (const auto &entry : fs::recursive_directory_iterator(ground.path()))
                if (entry.is_regular_file() && !entry.is_symlink())
                    found += QString::fromStdString(entry.path().lexically_relative(ground.path()).native() +
                                                    '=' + bytesOf(entry.path()));
            found.removeAll(u"home/new=home/new"_qs);
            std::sort(found.begin() + 1, found.end());
            return found.join(u", "_qs);
        });
    }

    void defaults()
    {
        const QTemporaryDir place;
        const DefaultsStore store([&] { return std::make_unique<QSettings>(place.filePath(u"d"_qs), typed); },
                                  place.filePath(u"locked"_qs));
        auto &changing = const_cast<DefaultsStore &>(store);
        // The key, what is stored, and what the system then keeps it as.
        compareTable(fixture(u"macparts/defaults.txt"_qs), [&](const Cells &row) {
            const QJsonValue given = QJsonDocument::fromJson('[' + row[1] + ']').array().first();
            if (!changing.change(row.text(0), [&](const QJsonValue &) { return given; }))
                return u"refused"_qs;
            if (store.value(row.text(0)) != given)
                return u"another value"_qs;
            return QString::fromLatin1(
                QSettings(place.filePath(u"d"_qs), typed).value(row.text(0)).typeName());
        });
        // Of two at once neither loses what the other counted. The stand-in's file tells its changes by size.
        const std::string problem = inChildren(4, [&](int) -> std::string {
            for (int round = 0; round < 25; ++round)
                if (!changing.change(u"count"_qs,
                                     [](const QJsonValue &old) { return old.toString() + u'x'; }))
                    return "refused";
            return {};
        });
        QCOMPARE(problem, std::string());
        QCOMPARE(store.value(u"count"_qs).toString().size(), 100);
        QVERIFY(changing.change(u"count"_qs, [](const QJsonValue &) { return QJsonValue::Undefined; }));
        QVERIFY(store.value(u"count"_qs).isUndefined());
    }

    void processes()
    {
        // The id, what `ps` answers at first and when the signal is due, "-" where it cannot be run, and what
        // is signalled.
        compareTable(fixture(u"macparts/processes.txt"_qs), [](const Cells &row) {
            Answering shell;
            for (const qsizetype column : {1, 2})
                shell.answers.push_back(row[column] == "-" ? std::nullopt
                                                           : std::optional(row.string(column)));
            QString sent = u"nothing"_qs;
            MacProcessControl control(shell, [&](std::int32_t pid, int signal) {
                sent = u"%1 gets %2"_qs.arg(pid).arg(signal);
                return true;
            });
            const auto process = control.identify(row[0].toInt());
            if (!process)
                return u"nobody"_qs;
            const bool isSignalled = control.signal(*process, QuitSignal::terminate);
            const auto hasEnded = control.endsWithin(std::chrono::milliseconds(0), *process, {});
            return sent + (isSignalled ? u", and lives"_qs : u", is another"_qs) +
                   (!hasEnded   ? u", as far as one can tell"_qs
                    : *hasEnded ? u" no more"_qs
                                : QString());
        });
    }

    void questionsWaitForEachOther()
    {
        using namespace std::chrono_literals;
        OneQuestion question;
        std::promise<void> answer;
        const auto hanging = [given = answer.get_future().share()] { return given.wait(), 1; };
        QVERIFY(!question.ask(0ms, {}, {}, hanging));
        std::atomic<bool> isAsked = false;
        const auto second = [&] { return isAsked = true; };
        QVERIFY(!question.ask(30ms, {}, {}, second) && !isAsked);
        answer.set_value();
        QCOMPARE(question.ask(1min, {}, {}, second), std::optional(true));
    }

    void environmentForTools()
    {
        // PATH, LC_ALL, LC_CTYPE and LANG as somebody starts the program, "-" for none, and what tools find.
        compareTable(fixture(u"macparts/environment.txt"_qs), [](const Cells &row) {
            const char *names[] = {"PATH", "LC_ALL", "LC_CTYPE", "LANG"};
            for (qsizetype index = 0; index < 4; ++index)
                if (row[index] == "-")
                    qunsetenv(names[index]);
                else
                    qputenv(names[index], row[index]);
            prepareEnvironmentForTools();
            return lines(names,
                         [](const char *name) {
                             return qEnvironmentVariableIsSet(name) ? qEnvironmentVariable(name) : u"-"_qs;
                         })
                .replace(u'\n', u' ');
        });
    }
};

QTEST_GUILESS_MAIN(MacPartsTest)
#include "MacPartsTest.moc"
