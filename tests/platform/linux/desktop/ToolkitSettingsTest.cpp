#include "platform/linux/desktop/ToolkitSettings.h"
#include "OwnDisplay.h"
#include "platform/linux/desktop/ToolkitAppearance.h"
#include "support/Table.h"
#include "support/TemporaryMachine.h"

#include <csignal>

using namespace swabby;

class ToolkitSettingsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatThePropertySaysIsReadAsFarAsItGoes()
    {
        compareTable(fixture(u"linux/toolkit_settings.txt"_qs), [](const Cells &row) {
            const ToolkitSettings settings = parseToolkitSettings(row.string(1));
            const auto name = settings.find("Net/ThemeName");
            const std::string *words =
                name == settings.end() ? nullptr : std::get_if<std::string>(&name->second);
            return u"%1 %2 %3"_qs.arg(settings.size())
                .arg(words ? QString::fromStdString(*words) : u"-"_qs,
                     prefersDark(settings) ? u"dark"_qs : u"open"_qs);
        });
    }

    void themesSayInTheirNamesWhetherTheyAreDark()
    {
        compareTable(fixture(u"linux/theme_names.txt"_qs), [](const Cells &row) {
            return prefersDark({{"Net/ThemeName", row.string(0)}}) ? u"dark"_qs : u"open"_qs;
        });
    }

    void theDesktopIsFollowed()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"settings"_qs);
        const auto choose = [&](const QByteArray &theme) {
            QFile settings(file);
            QVERIFY(settings.open(QIODevice::WriteOnly));
            settings.write("Net/ThemeName \"" + theme + "\"\n");
        };
        const ToolkitAppearance appearance;
        const auto says = [&](std::optional<bool> dark) {
            return waitUntil([&] { return appearance.now().prefersDark == dark; });
        };
        choose("Mill-Dark");
        QProcess manager;
        manager.start(u"xsettingsd"_qs, {u"-c"_qs, file});
        QVERIFY(manager.waitForStarted() && says(true));
        choose("Mill");
        ::kill(static_cast<pid_t>(manager.processId()), SIGHUP); // that it reads them again
        QVERIFY(says(std::nullopt));
        choose("Mill-Dark");
        ::kill(static_cast<pid_t>(manager.processId()), SIGHUP);
        QVERIFY(says(true));
        manager.kill();
        QVERIFY(manager.waitForFinished() && says(std::nullopt));
    }
};

int main(int argc, char *argv[])
{
    return runOnOwnDisplay<ToolkitSettingsTest>(argc, argv);
}
#include "ToolkitSettingsTest.moc"
