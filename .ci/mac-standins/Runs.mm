// Runs Swabby's Mac adapters against the stand-ins: what each asks of a Mac, and what it makes of the
// answers.
#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

#include "StandIns.h"
#include "platform/desktop/DesktopRequests.h"
#include "platform/mac/MacDockPresence.h"
#include "platform/mac/MacKernelCounters.h"
#include "platform/mac/MacLoginService.h"
#include "platform/mac/MacNotifier.h"
#include "platform/mac/MacPowerSupply.h"
#include "platform/mac/MacRunningApplications.h"
#include "platform/mac/MacSecretStore.h"
#include "platform/mac/MacWorkspace.h"
#include "platform/mac/SystemTrash.h"

#include <QtGui/QGuiApplication>

#include <cstdio>

using namespace swabby;
using Words = std::vector<std::string>;

namespace {

int failures = 0;

void fail(int line, const char *what)
{
    std::printf("line %d: %s\n", line, what);
    for (const std::string &words : mac().asked)
        std::printf("    asked: %s\n", words.c_str());
    ++failures;
}

#define CHECK(condition)                                                                                     \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            fail(__LINE__, #condition);                                                                      \
    } while (false)
#define CHECK_ASKED(...)                                                                                     \
    do {                                                                                                     \
        const Words news = mac().news();                                                                     \
        if (news != Words{__VA_ARGS__}) {                                                                    \
            mac().asked = news;                                                                              \
            fail(__LINE__, "asked: " #__VA_ARGS__);                                                          \
            mac().asked.clear();                                                                             \
        }                                                                                                    \
    } while (false)

void runKernel()
{
    MacKernelCounters kernel;
    const unsigned ticks[] = {11, 12, 13, 14}; // as a Mac orders them: user, system, idle, nice
    std::copy(std::begin(ticks), std::end(ticks), mac().ticks);
    mac().active = 20;
    mac().wired = 30;
    mac().compressed = 40;
    const auto read = kernel.cpuTicks();
    CHECK(read && read->user == 11 && read->system == 12 && read->idle == 13 && read->nice == 14);
    const auto pages = kernel.memoryPages();
    CHECK(pages && pages->pageSize == 16'384 && pages->active == 20 && pages->wired == 30 &&
          pages->compressed == 40);
    mac().hostStatus = 5;
    CHECK(!kernel.cpuTicks() && !kernel.memoryPages());

    CHECK(kernel.physicalMemory() == 0 && kernel.swapUsedBytes() == 0);
    mac().systemValues = {{"hw.memsize", 16ULL << 30}, {"vm.swapusage", 5ULL << 33}};
    CHECK(kernel.physicalMemory() == 16ULL << 30 && kernel.swapUsedBytes() == 5ULL << 33);

    mac().capacities = {{"/ kCFURLVolumeTotalCapacityKey", 494'384'795'648}};
    CHECK(kernel.startupVolume().totalBytes == 494'384'795'648 && kernel.startupVolume().freeBytes == 0);
    mac().capacities["/ kCFURLVolumeAvailableCapacityForImportantUsageKey"] = 7'000'000'000;
    CHECK(kernel.startupVolume().freeBytes == 7'000'000'000);
    for (int state = 0; state < 4; ++state) {
        mac().thermalState = state;
        CHECK(kernel.thermalState() == ThermalState(state));
    }
}

struct NoShell final : Shell {
    std::optional<std::string> perform(const std::string &, const std::vector<std::string> &, ToolOutput,
                                       const StopToken &) override
    {
        return std::nullopt;
    }
    bool has(const std::string &) override { return false; }
    bool launch(const std::string &, const std::vector<std::string> &) override { return false; }
};

void runPower()
{
    NoShell shell;
    MacPowerSupply power(shell);
    CHECK(!power.firstSource());
    mac().powerSources = {{{"Current Capacity", 83}, {"Time to Empty", -1}, {"Time to Full Charge", 45}},
                          {{"Current Capacity", 12}}};
    mac().isCharging = true;
    const auto source = power.firstSource();
    CHECK(source && source->currentCapacity == 83 && source->timeToEmpty == -1 &&
          source->timeToFullCharge == 45 && source->isCharging == true);
    mac().powerSources = {{}};
    mac().isCharging.reset();
    const auto silent = power.firstSource();
    CHECK(silent && !silent->currentCapacity && !silent->isCharging && !silent->timeToEmpty);
    mac().hasPowerInfo = false;
    CHECK(!power.firstSource());
}

void runSecrets()
{
    using namespace std::chrono_literals;
    using Keeper = SecretReading::Keeper;
    MacSecretStore secrets({1min, 1min, 1min}, {});
    const QString account = QStringLiteral("anthropicAPIKey");
    const auto read = [&] { return secrets.read(account, Unlocking::never, {}); };
    const std::string item = " kSecClass=kSecClassGenericPassword kSecAttrService=com.swabby.app.secrets"
                             " kSecAttrAccount=anthropicAPIKey";
    const std::string find = "find" + item + " kSecReturnData=true kSecMatchLimit=kSecMatchLimitOne";

    CHECK(!read().value && read().keeper == Keeper::open);
    mac().news();
    CHECK(secrets.write(QStringLiteral("first"), account));
    CHECK_ASKED(find,
                "add" + item + " kSecValueData=data kSecAttrAccessible=kSecAttrAccessibleAfterFirstUnlock");
    CHECK(secrets.write(QStringLiteral("sécond"), account));
    CHECK_ASKED(find, "update" + item);
    CHECK(read().value == QStringLiteral("sécond") && mac().keychain.size() == 1);
    mac().keychain.begin()->second = "\xff";
    CHECK(!read().value);
    mac().keychain.begin()->second = "";
    CHECK(read().value == QString(QLatin1String("")));
    mac().keychainStatus = -25308; // a locked keychain that may not ask
    CHECK(!read().value && read().keeper == Keeper::locked &&
          !secrets.write(QStringLiteral("third"), account));
    mac().keychainStatus = 0;
    mac().news();
    secrets.remove(account);
    CHECK_ASKED("delete" + item);
    CHECK(!read().value);
    MacSecretStore impatient({0ms, 0ms, 0ms}, {});
    CHECK(impatient.read(account, Unlocking::never, {}).keeper == Keeper::silent);
}

struct Processes final : ProcessControl {
    std::optional<ProcessIdentity> identify(std::int32_t pid) override { return ProcessIdentity{pid, 100}; }
    bool signal(const ProcessIdentity &, QuitSignal) override { return false; }
    std::optional<bool> endsWithin(std::chrono::milliseconds, const ProcessIdentity &,
                                   const StopToken &) override
    {
        return std::nullopt;
    }
};

void runWorkspace()
{
    mac().news();
    Processes processes;
    MacRunningApplications applications(processes);
    mac().applications = {{41, "com.example.Editor"}, {42, ""}};
    CHECK((applications.list() ==
           std::vector<RunningApplication>{{41, QStringLiteral("com.example.Editor")}, {42, QString()}}));
    CHECK(applications.terminate({41, 100}));
    CHECK_ASKED("terminate 41");
    CHECK(!applications.terminate({41, 99}) && !applications.terminate({77, 100}));
    CHECK_ASKED();

    MacWorkspace workspace;
    CHECK(workspace.reveal(QStringLiteral("/Users/Zoë/a.plist")) && workspace.openLoginItemSettings());
    CHECK_ASKED("select /Users/Zoë/a.plist in ''",
                "open x-apple.systempreferences:com.apple.LoginItems-Settings.extension");
    MacDockPresence().setActivationPolicy(ActivationPolicy::regular);
    MacDockPresence().setActivationPolicy(ActivationPolicy::accessory);
    CHECK_ASKED("policy 0", "policy 1");

    mac().trashed = "/Users/a/.Trash/n\xff 2";
    CHECK(moveToSystemTrash("/Users/a/n\xff") == std::filesystem::path("/Users/a/.Trash/n\xff 2"));
    CHECK_ASKED("trash /Users/a/n\xff");

    MacLoginService login;
    CHECK(!login.isEnabled() && login.registerAtLogin().isEmpty() && login.unregister().isEmpty());
    mac().loginStatus = 1;
    CHECK(login.isEnabled());
    mac().loginStatus = 2; // waits for the person's approval
    CHECK(!login.isEnabled());
    CHECK_ASKED("register", "unregister");

    mac().isRefusing = true;
    CHECK(!moveToSystemTrash("/Users/a/b") && !workspace.reveal({}) && !applications.terminate({41, 100}));
    CHECK(login.registerAtLogin() == QStringLiteral("Operation not permitted"));
    mac().isRefusing = false;
}

void answer(NSString *identifier, NSString *action)
{
    UNNotification *notification = [[UNNotification alloc] init];
    held<UNNotificationRequest *>(notification, "request") =
        [UNNotificationRequest requestWithIdentifier:identifier content:nil trigger:nil];
    UNNotificationResponse *response = [[UNNotificationResponse alloc] init];
    held<UNNotification *>(response, "notification") = notification;
    held<NSString *>(response, "action") = action;
    UNUserNotificationCenter *centre = UNUserNotificationCenter.currentNotificationCenter;
    [centre.delegate userNotificationCenter:centre
             didReceiveNotificationResponse:response
                      withCompletionHandler:^{
                        mac().asked.push_back("answered");
                      }];
    QCoreApplication::processEvents();
}

void runNotifications()
{
    mac().news();
    mac().isInBundle = false;
    Permissions permissions;
    MacNotifier nobody(permissions);
    nobody.requestPermission();
    nobody.post({QStringLiteral("Title"), QStringLiteral("Body")}, {});
    CHECK_ASKED();

    mac().isInBundle = true;
    MacNotifier notifier(permissions);
    notifier.requestPermission();
    CHECK_ASKED("centre", "ask 6");
    QCoreApplication::processEvents();
    CHECK(permissions.refused() == Permissions::Refused{Permission::notifications});
    int opened = 0;
    notifier.post({QStringLiteral("Title"), QStringLiteral("Body")}, [&opened] { ++opened; });
    CHECK_ASKED("request id-1|Title|Body|sound", "add id-1");

    answer(@"id-1", @"dismissed");
    CHECK(opened == 0);
    answer(@"id-1", UNNotificationDefaultActionIdentifier);
    answer(@"id-1", UNNotificationDefaultActionIdentifier);
    answer(@"of an earlier run", UNNotificationDefaultActionIdentifier);
    CHECK(opened == 1);
    UNUserNotificationCenter *centre = UNUserNotificationCenter.currentNotificationCenter;
    [centre.delegate userNotificationCenter:centre
                    willPresentNotification:nil
                      withCompletionHandler:^(UNNotificationPresentationOptions options) {
                        mac().asked.push_back("shown " + std::to_string(options));
                      }];
    CHECK(mac().news().back() == "shown 26");
}

void runStatusItem()
{
    mac().news();
    TrayItems items = makeTrayItems();
    CHECK(items.size() == 1 && items[0]->place() == TrayItem::Place::there);
    CHECK_ASKED("item -1", "clicks 20");
    items[0]->show({.tip = QStringLiteral("7%"), .drawTitle = [](double ratio) {
                        QImage title(QSize(31, 32) * ratio, QImage::Format_ARGB32);
                        title.setDevicePixelRatio(ratio);
                        return title;
                    }});
    CHECK_ASKED("data PNG", "colours", "image 31x32", "read out Swabby 7%", "length 31");

    QRect clicked;
    QRect menu;
    QObject::connect(items[0].get(), &TrayItem::activated, [&](const QRect &where) { clicked = where; });
    QObject::connect(items[0].get(), &TrayItem::menuWanted, [&](const QRect &where) { menu = where; });
    auto *button = (__bridge NSStatusBarButton *)mac().button;
    [button.target performSelector:button.action withObject:button withObject:nil];
    CHECK(clicked == QRect(1000, 0, 40, 24) && menu.isNull());
    mac().isRightClick = true;
    [button.target performSelector:button.action withObject:button withObject:nil];
    CHECK(menu == QRect(1000, 0, 40, 24));
    items.clear();
    CHECK_ASKED("no item");
}

void choose(const std::string &title)
{
    for (const auto &line : mac().menuLines)
        if (line.title == title) {
            auto *item = (__bridge NSMenuItem *)line.line;
            [item.target performSelector:@selector(choose:) withObject:item withObject:nil];
        }
}

void runDesktop()
{
    mac().news();
    Words told;
    DesktopRequests requests = {
        .started = [&](bool atLogin) { told.push_back(atLogin ? "login" : "person"); },
        .openedAgain = [&] { told.push_back("again"); },
        .chosen = [&](TrayCommand what) { told.push_back(std::to_string(int(what))); },
        .sectionChosen = [&](int which) { told.push_back("section " + std::to_string(which)); },
        .sections = {QStringLiteral("Overview"), QStringLiteral("Speed & Running Apps")}};
    auto follower = followDesktop(requests);
    CHECK_ASKED("menus", "observe launched");
    CHECK(told.empty());
    auto *observer = (__bridge NSObject *)mac().observer;
    [observer performSelector:@selector(hasStarted:) withObject:nil withObject:nil];
    mac().isAtLogin = true;
    [observer performSelector:@selector(hasStarted:) withObject:nil withObject:nil];
    [observer performSelector:@selector(isOpenedAgain:withReply:) withObject:nil withObject:nil];
    for (const char *line :
         {"Settings…", "Quit Swabby", "Speed & Running Apps", "Refresh", "Swabby", "Ask AI"})
        choose(line);
    CHECK((told == Words{"person", "login", "again", "2", "4", "section 1", "3", "0", "1"}));
    mac().news();
    follower.reset();
    CHECK_ASKED("observe nothing", "reopen by nobody", "no menus");

    std::map<std::string, std::string> keys;
    for (const auto &line : mac().menuLines)
        if (!line.key.empty())
            CHECK(keys.emplace(line.key, line.title).second || line.key == "h");
    CHECK(keys[","] == "Settings…" && keys["q"] == "Quit Swabby" && keys["1"] == "Overview" &&
          keys["w"] == "Close");
}

} // namespace

int main(int argc, char *argv[])
{
    NSApp = [[NSApplication alloc] init];
    const long before = mac().liveReferences;
    runKernel();
    runPower();
    runSecrets();
    CHECK(mac().liveReferences == before);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    runWorkspace();
    runNotifications();
    runStatusItem();
    runDesktop();
    std::printf("%d failures\n", failures);
    return failures == 0 ? 0 : 1;
}
