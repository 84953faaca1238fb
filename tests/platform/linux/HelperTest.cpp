#include "StandIn.h"
#include "platform/posix/HelperProgram.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <QtTest/QTest>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

using namespace swabby;
using namespace std::chrono_literals;

namespace {

/// The children of this program that its main thread has started.
std::vector<pid_t> ownChildren()
{
    const std::string self = std::to_string(::getpid());
    std::ifstream list("/proc/" + self + "/task/" + self + "/children");
    return {std::istream_iterator<pid_t>(list), {}};
}

} // namespace

class HelperTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatAHelperCannotDo()
    {
        StandIn files;
        files.write("file", "content");
        // Not closed for a child: the helper has to.
        const int leaked = ::fcntl(STDERR_FILENO, F_DUPFD, 50);
        HelperProgram helper("confined_helper");
        compareTable(fixture(u"linux/what_a_helper_cannot_do.txt"_qs), [&](const Cells &row) {
            const QByteArray request = row[1]
                                           .replace("FILE", files.path("file").c_str())
                                           .replace("LEAKED", QByteArray::number(leaked))
                                           .replace("OTHER", QByteArray::number(::getpid()));
            return QString::fromStdString(helper.ask(request.toStdString(), 50ms).value_or("nothing"));
        });
        ::close(leaked);
        QVERIFY(std::filesystem::file_size(files.path("file")) > 0);
    }

    void itIsThereAgain()
    {
        const std::string large(3'000'000, 'x');
        HelperProgram helper("confined_helper");
        helper.begin();
        QCOMPARE(ownChildren().size(), std::size_t(1));
        QCOMPARE(helper.ask("say " + large, 1s), std::optional(large));
        ::kill(ownChildren().front(), SIGKILL);
        // Its socket closes a moment after.
        QVERIFY(
            waitUntil([&] { return helper.ask("say hello", 1s) == std::optional<std::string>("hello"); }));
        helper.end();
        QVERIFY(ownChildren().empty());
        QCOMPARE(helper.ask("say hello", 1s), std::optional<std::string>("hello"));
        QVERIFY(!HelperProgram("no-such-helper").ask("say hello", 1s));
    }
};

QTEST_GUILESS_MAIN(HelperTest)
#include "HelperTest.moc"
